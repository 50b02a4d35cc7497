#include "scene/PointGrid.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace osg
{

namespace
{

/// The place of a point that is in no cell.
constexpr std::uint32_t absent = std::numeric_limits<std::uint32_t>::max();

double cellsPerLength(double low, double high, std::size_t cells)
{
    const double density = static_cast<double>(cells) / (high - low);
    return std::isfinite(density) ? density : 0;
}

} // namespace

void PlaneBox::extend(const PlanePoint& point)
{
    low = {std::min(low.x, point.x), std::min(low.y, point.y)};
    high = {std::max(high.x, point.x), std::max(high.y, point.y)};
}

PointGrid::PointGrid(const std::vector<PlanePoint>& points) : m_points(points), m_places(points.size(), absent)
{
    if (!points.empty())
        m_box = {points.front(), points.front()};
    for (const PlanePoint& point : points)
        m_box.extend(point);
    m_side = std::max<std::size_t>(1, static_cast<std::size_t>(std::sqrt(static_cast<double>(points.size()))));
    m_columnsPerLength = cellsPerLength(m_box.low.x, m_box.high.x, m_side);
    m_rowsPerLength = cellsPerLength(m_box.low.y, m_box.high.y, m_side);
    m_cells.resize(m_side * m_side);
}

/// What is no number falls into the first cell.
std::size_t PointGrid::place(double value, double low, double cellsPerLength) const
{
    const double cell = (value - low) * cellsPerLength;
    if (!(cell > 0))
        return 0;
    return cell < static_cast<double>(m_side) ? static_cast<std::size_t>(cell) : m_side - 1;
}

std::vector<std::uint32_t>& PointGrid::cellOf(std::size_t point)
{
    return m_cells[rowOf(m_points[point].y) * m_side + columnOf(m_points[point].x)];
}

void PointGrid::insert(std::size_t point)
{
    if (m_places[point] != absent)
        return;
    std::vector<std::uint32_t>& cell = cellOf(point);
    m_places[point] = static_cast<std::uint32_t>(cell.size());
    cell.push_back(static_cast<std::uint32_t>(point));
}

void PointGrid::remove(std::size_t point)
{
    if (m_places[point] == absent)
        return;
    std::vector<std::uint32_t>& cell = cellOf(point);
    cell[m_places[point]] = cell.back();
    m_places[cell.back()] = m_places[point];
    cell.pop_back();
    m_places[point] = absent;
}

std::size_t PointGrid::cellsIn(const PlaneBox& box) const
{
    return (columnOf(box.high.x) - columnOf(box.low.x) + 1) * (rowOf(box.high.y) - rowOf(box.low.y) + 1);
}

} // namespace osg
