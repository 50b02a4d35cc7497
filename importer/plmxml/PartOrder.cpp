#include "importer/plmxml/PartOrder.h"

#include <algorithm>

namespace importer::plmxml
{

PartOrder::PartOrder(const Structure& structure) : m_structure(structure), m_states(structure.parts.size())
{
    for (const std::vector<std::uint32_t>& roots : structure.graphs)
        for (const std::uint32_t root : roots) {
            visit(root);
            finishOpen();
        }
    std::reverse(m_parts.begin(), m_parts.end());
}

void PartOrder::visit(std::uint32_t placement)
{
    const std::uint32_t part = m_structure.placements[placement].part;
    if (part == Nothing || m_states[part] == State::Done)
        return;
    if (m_states[part] == State::Open) {
        m_ring = m_ring == Nothing ? placement : m_ring;
        return;
    }
    m_states[part] = State::Open;
    m_levels.push_back({part});
}

/// A part is done when all that is in it is done.
void PartOrder::finishOpen()
{
    while (!m_levels.empty()) {
        Level& level = m_levels.back();
        const std::vector<std::uint32_t>& placements = m_structure.parts[level.part].placements;
        if (level.next < placements.size()) {
            visit(placements[level.next++]);
            continue;
        }
        m_states[level.part] = State::Done;
        m_parts.push_back(level.part);
        m_levels.pop_back();
    }
}

} // namespace importer::plmxml
