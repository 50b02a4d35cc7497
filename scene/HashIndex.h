#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace osg
{

/// Finds entries of a list by the hash of their keys. The list is the caller's; this holds no more than a place in it
/// and a part of the hash for each entry, so that a key which is not there is told from the others without a look at
/// them.
class HashIndex
{
public:
    static constexpr std::uint32_t None = ~std::uint32_t(0);

    /// The entry of this hash for which `isWanted(entry)` is true, `None` if there is none.
    template <class Predicate>
    std::uint32_t find(std::uint64_t hash, const Predicate& isWanted) const
    {
        if (m_slots.empty())
            return None;
        for (std::size_t place = firstPlace(hash);; place = next(place)) {
            const Slot& slot = m_slots[place];
            if (slot.entry == None)
                return None;
            if (slot.hash == partOf(hash) && isWanted(slot.entry))
                return slot.entry;
        }
    }
    /// `entry` is below `None`. An earlier one of the same key stays, and is the one that is found.
    void add(std::uint64_t hash, std::uint32_t entry)
    {
        if (2 * (m_count + 1) > m_slots.size())
            grow();
        ++m_count;
        put({partOf(hash), entry});
    }

private:
    struct Slot {
        std::uint32_t hash = 0;
        std::uint32_t entry = None;
    };

    /// Hashes that differ anywhere mostly differ in the low bits of it, too.
    static std::uint32_t partOf(std::uint64_t hash)
    {
        return static_cast<std::uint32_t>((hash ^ hash >> 32) * 0x9e3779b97f4a7c15u >> 32);
    }
    std::size_t firstPlace(std::uint64_t hash) const { return partOf(hash) & (m_slots.size() - 1); }
    std::size_t next(std::size_t place) const { return (place + 1) & (m_slots.size() - 1); }

    void put(const Slot& slot)
    {
        std::size_t place = slot.hash & (m_slots.size() - 1);
        while (m_slots[place].entry != None)
            place = next(place);
        m_slots[place] = slot;
    }

    void grow()
    {
        constexpr std::size_t Least = 16;
        std::vector<Slot> former(m_slots.empty() ? Least : 2 * m_slots.size());
        former.swap(m_slots);
        for (const Slot& slot : former)
            if (slot.entry != None)
                put(slot);
    }

    std::vector<Slot> m_slots; ///< a power of two of them, half of them free at least
    std::size_t m_count = 0;
};

} // namespace osg
