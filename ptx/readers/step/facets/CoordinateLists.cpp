#include "ptx/readers/step/facets/CoordinateLists.h"

namespace ptx::step::facets
{

const std::vector<Point>& CoordinateLists::of(std::uint32_t number)
{
    const auto [entry, isNew] = m_points.try_emplace(number);
    const p21::Fields written = m_entities.at(number);
    if (!isNew || written.type() != "COORDINATES_LIST")
        return entry->second;
    const p21::Fields rows = written.list(2);
    if (!m_take(rows.size()))
        return entry->second;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const p21::Fields row = rows.list(i);
        entry->second.push_back({row.real(0).value_or(0), row.real(1).value_or(0), row.real(2).value_or(0)});
    }
    return entry->second;
}

} // namespace ptx::step::facets
