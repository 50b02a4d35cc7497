#include "scene/Polygons.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace osg
{

namespace
{

struct Point {
    double x = 0, y = 0;

    bool operator==(const Point&) const = default;
};

/// Twice the area of a triangle, positive when it runs to the left.
double twiceArea(const Point& a, const Point& b, const Point& c)
{
    return (b.x - a.x) * (c.y - a.y) - (c.x - a.x) * (b.y - a.y);
}

/// A polygon in its own plane, running to the left, from which ears are cut.
class EarCutter
{
public:
    EarCutter(std::span<const Vec3f> positions, std::span<const std::uint32_t> corners);

    void run(std::vector<std::uint32_t>& triangles);

private:
    bool isEar(std::size_t place);
    const Point& point(std::size_t place) const { return m_points[m_left[place % m_left.size()]]; }
    void cut(std::size_t place, std::vector<std::uint32_t>& triangles);

    std::span<const std::uint32_t> m_corners;
    std::vector<Point> m_points;
    std::vector<std::size_t> m_left; ///< places of corners that are not cut off yet
    std::uint64_t m_work = 0;        ///< corners that were compared with an ear
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

/// Looks along the axis that the polygon faces most.
EarCutter::EarCutter(std::span<const Vec3f> positions, std::span<const std::uint32_t> corners) : m_corners(corners)
{
    const std::array<double, 3> normal = normalOf(positions, corners);
    const auto steeper = [&](double a, double b) { return std::abs(a) < std::abs(b); };
    const auto axis = std::max_element(normal.begin(), normal.end(), steeper) - normal.begin();
    const double side = normal[static_cast<std::size_t>(axis)] < 0 ? -1 : 1;
    for (const std::uint32_t corner : corners) {
        const Vec3f& p = positions[corner];
        const Point flat = axis == 0 ? Point{p.y, p.z} : axis == 1 ? Point{p.z, p.x} : Point{p.x, p.y};
        m_points.push_back({flat.x * side, flat.y});
        m_left.push_back(m_left.size());
    }
}

/// True when the corner points outwards and no other corner lies in its triangle. One at the place of a corner of the
/// triangle does not count: a line that runs to a hole and back has its ends in the polygon twice. What leads on from
/// there into the triangle has its next corner in it.
bool EarCutter::isEar(std::size_t place)
{
    const std::size_t count = m_left.size();
    const Point& a = point(place + count - 1);
    const Point& b = point(place);
    const Point& c = point(place + 1);
    if (!(twiceArea(a, b, c) > 0))
        return false;
    for (std::size_t other = place + 2; other < place + count - 1; ++other) {
        ++m_work;
        const Point& p = point(other);
        const bool isInside = twiceArea(a, b, p) >= 0 && twiceArea(b, c, p) >= 0 && twiceArea(c, a, p) >= 0;
        if (isInside && p != a && p != b && p != c)
            return false;
    }
    return true;
}

void EarCutter::cut(std::size_t place, std::vector<std::uint32_t>& triangles)
{
    const std::size_t count = m_left.size();
    for (const std::size_t corner : {place + count - 1, place, place + 1})
        triangles.push_back(m_corners[m_left[corner % count]]);
    m_left.erase(m_left.begin() + static_cast<std::ptrdiff_t>(place));
}

/// Where no ear is found in sensible time, the polygon crosses itself or is flat; then any corner is cut off.
void EarCutter::run(std::vector<std::uint32_t>& triangles)
{
    std::size_t place = 0;
    std::size_t refused = 0;
    const std::uint64_t maxWork = 8 * std::uint64_t(m_corners.size()) * m_corners.size();
    while (m_left.size() >= 3) {
        place %= m_left.size();
        if (refused < m_left.size() && m_work <= maxWork && !isEar(place)) {
            ++refused;
            ++place;
            continue;
        }
        cut(place, triangles);
        refused = 0;
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
