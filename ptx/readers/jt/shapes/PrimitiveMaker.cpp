#include "ptx/readers/jt/shapes/PrimitiveMaker.h"

#include "scene/Polygons.h"

namespace ptx::jt::shapes
{

namespace
{

constexpr std::uint64_t SmallPolygon = 64;
constexpr std::uint64_t MostPolygonWork = 100'000'000;

} // namespace

bool PrimitiveMaker::add(ShapeKind kind, std::size_t from, std::size_t to)
{
    if (kind == ShapeKind::Polygons)
        return addPolygon(from, to);
    if (kind == ShapeKind::Strips)
        addStrip(from, to);
    for (std::size_t j = from; j < to && kind == ShapeKind::Points; ++j)
        m_shape.points.push_back(corner(j));
    for (std::size_t j = from + 1; j < to && kind == ShapeKind::Polylines; ++j)
        m_shape.lines.push_back({corner(j - 1), corner(j)});
    return true;
}

// A vertex is its own record.
Corner PrimitiveMaker::corner(std::size_t i) const
{
    const auto at = static_cast<std::uint32_t>(m_index[i]);
    return {at, at};
}

void PrimitiveMaker::addTriangle(const Triangle& triangle)
{
    const auto same = [&](std::size_t i, std::size_t k) {
        const std::uint32_t first = triangle.corners[i].position;
        const std::uint32_t second = triangle.corners[k].position;
        const auto& p = m_shape.positions;
        return first < p.size() && second < p.size() && p[first] == p[second];
    };
    if (!same(0, 1) && !same(1, 2) && !same(0, 2))
        m_shape.triangles.push_back(triangle);
}

void PrimitiveMaker::addStrip(std::size_t from, std::size_t to)
{
    for (std::size_t j = from + 2; j < to; ++j) {
        const std::size_t isOdd = (j - from) % 2;
        addTriangle({{corner(j - 2 + isOdd), corner(j - 1 - isOdd), corner(j)}});
    }
}

bool PrimitiveMaker::addPolygon(std::size_t from, std::size_t to)
{
    if (m_positions.empty())
        for (const codec::Vector& p : m_shape.positions)
            m_positions.push_back({p[0], p[1], p[2]});
    std::vector<std::uint32_t> corners;
    for (std::size_t j = from; j < to; ++j) {
        corners.push_back(corner(j).position);
        if (corners.back() >= m_positions.size())
            return false;
    }
    const std::uint64_t n = corners.size();
    if (n > SmallPolygon && (n > MostPolygonWork / n || (m_work += n * n) > MostPolygonWork))
        return false;
    std::vector<std::uint32_t> triangles;
    osg::appendPolygon(m_positions, corners, triangles);
    for (std::size_t i = 0; i + 2 < triangles.size(); i += 3)
        addTriangle({{{{triangles[i], triangles[i]},
                       {triangles[i + 1], triangles[i + 1]},
                       {triangles[i + 2], triangles[i + 2]}}}});
    return true;
}

} // namespace ptx::jt::shapes
