#include "importer/plmxml/IdTable.h"

#include <bit>
#include <functional>

namespace importer::plmxml
{

namespace
{

std::uint32_t hashOf(std::string_view id)
{
    const auto hash = static_cast<std::uint64_t>(std::hash<std::string_view>()(id));
    return static_cast<std::uint32_t>(hash ^ (hash >> 32));
}

} // namespace

IdTable::IdTable(const std::vector<pugi::xml_node>& elements) : m_slots(std::bit_ceil(2 * elements.size() + 2))
{
    for (std::size_t i = 0; i < elements.size(); ++i) {
        const std::string_view id = elements[i].attribute("id").value();
        if (id.empty())
            continue;
        const std::uint32_t hash = hashOf(id);
        Slot& slot = m_slots[slotOf(id, hash)];
        if (slot.number == None)
            slot = {static_cast<std::uint32_t>(i), hash, id.data()};
        else
            ++m_duplicates;
    }
}

std::uint32_t IdTable::find(std::string_view id) const
{
    return id.empty() ? None : m_slots[slotOf(id, hashOf(id))].number;
}

/// That of the element with this id, or the empty one where it would stand.
std::size_t IdTable::slotOf(std::string_view id, std::uint32_t hash) const
{
    const std::size_t mask = m_slots.size() - 1;
    std::size_t at = hash & mask;
    for (; m_slots[at].number != None; at = (at + 1) & mask)
        if (m_slots[at].hash == hash && m_slots[at].id == id)
            break;
    return at;
}

} // namespace importer::plmxml
