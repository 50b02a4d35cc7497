#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>
#include <vector>

namespace osg::scenefile
{

/// Numbers texts from 0 on, equal ones alike. One flat table: scenes have millions of names.
class TextNumbers
{
public:
    struct Entry {
        std::uint32_t index;
        bool fresh;
    };

    /// The index of a text that was added; none for any other.
    std::optional<std::uint32_t> find(std::string_view text)
    {
        if (m_slots.empty())
            return std::nullopt;
        const Slot& slot = find(text, hashOf(text));
        return slot.number == 0 ? std::nullopt : std::optional(slot.number - 1);
    }

    /// `text` must outlive this object.
    Entry add(std::string_view text)
    {
        if (2 * (m_texts.size() + 1) > m_slots.size())
            grow();
        const std::uint32_t hash = hashOf(text);
        Slot& slot = find(text, hash);
        if (slot.number != 0)
            return {slot.number - 1, false};
        m_texts.push_back(text);
        slot = {hash, static_cast<std::uint32_t>(m_texts.size())};
        return {slot.number - 1, true};
    }

private:
    struct Slot {
        std::uint32_t hash = 0;
        std::uint32_t number = 0; ///< index + 1, 0 in a free slot
    };

    static std::uint32_t hashOf(std::string_view text)
    {
        return static_cast<std::uint32_t>(std::hash<std::string_view>()(text));
    }

    /// The slot of `text`, or the free one that it belongs into.
    Slot& find(std::string_view text, std::uint32_t hash)
    {
        const std::size_t mask = m_slots.size() - 1;
        std::size_t place = hash & mask;
        while (m_slots[place].number != 0 &&
               (m_slots[place].hash != hash || m_texts[m_slots[place].number - 1] != text))
            place = (place + 1) & mask;
        return m_slots[place];
    }

    void grow()
    {
        std::vector<Slot> old(m_slots.empty() ? 64 : 2 * m_slots.size());
        old.swap(m_slots);
        const std::size_t mask = m_slots.size() - 1;
        for (const Slot& slot : old) {
            std::size_t place = slot.hash & mask;
            while (slot.number != 0 && m_slots[place].number != 0)
                place = (place + 1) & mask;
            if (slot.number != 0)
                m_slots[place] = slot;
        }
    }

    std::vector<Slot> m_slots; ///< a power of two, at most half full
    std::vector<std::string_view> m_texts;
};

} // namespace osg::scenefile
