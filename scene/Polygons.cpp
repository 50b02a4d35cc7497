#include "scene/Polygons.h"

#include "scene/PointGrid.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace osg
{

namespace
{

using Point = PlanePoint;

/// Twice the area of a triangle, positive when it runs to the left.
double twiceArea(const Point& a, const Point& b, const Point& c)
{
    return (b.x - a.x) * (c.y - a.y) - (c.x - a.x) * (b.y - a.y);
}

/// A polygon in its own plane, running to the left, from which ears are cut.
///
/// Only corners that do not point outwards can keep another corner from being an ear: where one that points outwards
/// lies in the triangle of another, one that does not lies there too. They are kept in a grid.
class EarCutter
{
public:
    EarCutter(std::span<const Vec3f> positions, std::span<const std::uint32_t> corners);

    void run(std::vector<std::uint32_t>& triangles);

private:
    bool pointsOutwards(std::size_t corner) const;
    bool isEar(std::size_t corner);
    bool blocks(std::size_t other, const std::array<Point, 3>& ear) const;
    void sortIn(std::size_t corner);
    void cut(std::size_t corner, std::vector<std::uint32_t>& triangles);

    std::span<const std::uint32_t> m_corners;
    std::vector<Point> m_points;
    std::vector<std::size_t> m_next, m_previous; ///< among the corners that are not cut off yet
    PointGrid m_blockers;                        ///< corners that do not point outwards
    std::uint64_t m_work = 0;                    ///< corners and cells that were looked at
};

/// The sum of the cross products of the corners (Newell's method).
std::array<double, 3> normalOf(std::span<const Vec3f> positions, std::span<const std::uint32_t> corners)
{
    std::array<double, 3> normal = {};
    for (std::size_t i = 0; i < corners.size(); ++i) {
        const Vec3f& a = positions[corners[i]];
        const Vec3f& b = positions[corners[(i + 1) % corners.size()]];
        normal[0] += (double(a.y) - b.y) * (double(a.z) + b.z);
        normal[1] += (double(a.z) - b.z) * (double(a.x) + b.x);
        normal[2] += (double(a.x) - b.x) * (double(a.y) + b.y);
    }
    return normal;
}

/// The corners seen along the axis that the polygon faces most.
std::vector<Point> flatten(std::span<const Vec3f> positions, std::span<const std::uint32_t> corners)
{
    const std::array<double, 3> normal = normalOf(positions, corners);
    const auto steeper = [&](double a, double b) { return std::abs(a) < std::abs(b); };
    const auto axis = std::max_element(normal.begin(), normal.end(), steeper) - normal.begin();
    const double side = normal[static_cast<std::size_t>(axis)] < 0 ? -1 : 1;
    std::vector<Point> points;
    points.reserve(corners.size());
    for (const std::uint32_t corner : corners) {
        const Vec3f& p = positions[corner];
        const Point flat = axis == 0 ? Point{p.y, p.z} : axis == 1 ? Point{p.z, p.x} : Point{p.x, p.y};
        points.push_back({flat.x * side, flat.y});
    }
    return points;
}

EarCutter::EarCutter(std::span<const Vec3f> positions, std::span<const std::uint32_t> corners)
    : m_corners(corners), m_points(flatten(positions, corners)), m_next(corners.size()), m_previous(corners.size()),
      m_blockers(m_points)
{
    for (std::size_t i = 0; i < corners.size(); ++i) {
        m_next[i] = (i + 1) % corners.size();
        m_previous[m_next[i]] = i;
    }
    for (std::size_t i = 0; i < corners.size(); ++i)
        sortIn(i);
}

bool EarCutter::pointsOutwards(std::size_t corner) const
{
    return twiceArea(m_points[m_previous[corner]], m_points[corner], m_points[m_next[corner]]) > 0;
}

void EarCutter::sortIn(std::size_t corner)
{
    if (pointsOutwards(corner))
        m_blockers.remove(corner);
    else
        m_blockers.insert(corner);
}

/// True when a corner lies in the triangle. One at the place of a corner of the triangle does not count: a line that
/// runs to a hole and back has its ends in the polygon twice. What leads on from there into the triangle has its next
/// corner in it.
bool EarCutter::blocks(std::size_t other, const std::array<Point, 3>& ear) const
{
    const auto& [a, b, c] = ear;
    const Point& p = m_points[other];
    const bool isInside = twiceArea(a, b, p) >= 0 && twiceArea(b, c, p) >= 0 && twiceArea(c, a, p) >= 0;
    return isInside && p != a && p != b && p != c;
}

/// True when the corner points outwards and no other corner lies in its triangle.
bool EarCutter::isEar(std::size_t corner)
{
    ++m_work;
    if (!pointsOutwards(corner))
        return false;
    const std::array<Point, 3> ear = {m_points[m_previous[corner]], m_points[corner], m_points[m_next[corner]]};
    PlaneBox box = {ear[0], ear[0]};
    box.extend(ear[1]);
    box.extend(ear[2]);
    m_work += m_blockers.cellsIn(box);
    return !m_blockers.anyIn(box, [&](std::size_t other) {
        ++m_work;
        return blocks(other, ear);
    });
}

void EarCutter::cut(std::size_t corner, std::vector<std::uint32_t>& triangles)
{
    const std::size_t before = m_previous[corner], after = m_next[corner];
    for (const std::size_t each : {before, corner, after})
        triangles.push_back(m_corners[each]);
    m_next[before] = after;
    m_previous[after] = before;
    m_blockers.remove(corner);
    sortIn(before);
    sortIn(after);
}

/// Where no ear is found in sensible time, the polygon crosses itself or is flat; then any corner is cut off.
void EarCutter::run(std::vector<std::uint32_t>& triangles)
{
    const std::uint64_t count = m_corners.size();
    const std::uint64_t maxWork = std::min<std::uint64_t>(4000 * count, 200'000'000 + 64 * count);
    std::size_t corner = 0;
    std::size_t refused = 0;
    for (std::size_t left = m_corners.size(); left >= 3;) {
        const std::size_t after = m_next[corner];
        if (refused < left && m_work <= maxWork && !isEar(corner)) {
            ++refused;
        } else {
            cut(corner, triangles);
            --left;
            refused = 0;
        }
        corner = after;
    }
}

} // namespace

void appendPolygon(std::span<const Vec3f> positions, std::span<const std::uint32_t> corners,
                   std::vector<std::uint32_t>& triangles)
{
    if (corners.size() == 3)
        triangles.insert(triangles.end(), corners.begin(), corners.end());
    else if (corners.size() > 3)
        EarCutter(positions, corners).run(triangles);
}

} // namespace osg
