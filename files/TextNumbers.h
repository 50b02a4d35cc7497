#pragma once

#include <algorithm>
#include <cstdint>
#include <functional>
#include <memory>
#include <string_view>
#include <vector>

namespace files
{

/// Numbers texts from 0 on, equal ones alike. One flat table: scenes have millions of names.
class TextNumbers
{
public:
    struct Entry {
        std::uint32_t index;
        bool fresh;
    };

    /// `text` must outlive this object.
    Entry add(std::string_view text)
    {
        return add(text, [](std::string_view same) { return same; });
    }
    /// `keep` makes the text that outlives this object of one that is new.
    template <class Keep>
    Entry add(std::string_view text, const Keep& keep)
    {
        if (2 * (m_texts.size() + 1) > m_slots.size())
            grow();
        const std::uint32_t hash = hashOf(text);
        Slot& slot = find(text, hash);
        if (slot.number != 0)
            return {slot.number - 1, false};
        m_texts.push_back(keep(text));
        slot = {hash, static_cast<std::uint32_t>(m_texts.size())};
        return {slot.number - 1, true};
    }
    /// In the order of their numbers.
    const std::vector<std::string_view>& texts() const { return m_texts; }

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

/// Numbers texts that need not outlive it: it keeps a copy of each, one behind the other in blocks.
class TextPool
{
public:
    std::uint32_t add(std::string_view text)
    {
        return m_numbers.add(text, [this](std::string_view fresh) { return kept(fresh); }).index;
    }
    /// In the order of their numbers.
    const std::vector<std::string_view>& texts() const { return m_numbers.texts(); }
    /// All texts without anything between them, in a few pieces.
    std::vector<std::string_view> pieces() const
    {
        std::vector<std::string_view> pieces;
        for (const Block& block : m_blocks)
            pieces.emplace_back(block.start.get(), block.used);
        return pieces;
    }
    /// Of all texts together.
    std::uint64_t bytes() const { return m_bytes; }

private:
    struct Block {
        std::unique_ptr<char[]> start;
        std::size_t size = 0;
        std::size_t used = 0;
    };

    std::string_view kept(std::string_view text)
    {
        constexpr std::size_t usualSize = std::size_t(1) << 16;
        if (m_blocks.empty() || text.size() > m_blocks.back().size - m_blocks.back().used) {
            const std::size_t size = std::max(usualSize, text.size());
            m_blocks.push_back({std::make_unique_for_overwrite<char[]>(size), size, 0});
        }
        Block& block = m_blocks.back();
        char* const place = block.start.get() + block.used;
        std::copy(text.begin(), text.end(), place);
        block.used += text.size();
        m_bytes += text.size();
        return {place, text.size()};
    }

    TextNumbers m_numbers;
    std::vector<Block> m_blocks;
    std::uint64_t m_bytes = 0;
};

} // namespace files
