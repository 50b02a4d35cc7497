#include "files/glb/levels/Deviation.h"

#include <Eigen/Geometry>

#include <algorithm>
#include <array>
#include <cmath>

namespace files::glb::levels
{

namespace
{

using geometry::rays::Corners;
using geometry::rays::NearestTriangles;

using Triple = std::array<std::uint32_t, 3>;

/// A surface of fewer triangles is measured as if it had as many.
constexpr std::size_t fewestTriangles = 800;

/// The same for a triangle whichever of its corners comes first.
Triple turned(const Triangles& triangles, std::size_t first)
{
    Triple triple = {triangles[first], triangles[first + 1], triangles[first + 2]};
    std::rotate(triple.begin(), std::min_element(triple.begin(), triple.end()), triple.end());
    return triple;
}

/// The triangles of one list, in order.
std::vector<Triple> sorted(const Triangles& triangles)
{
    std::vector<Triple> result;
    for (std::size_t i = 0; i < triangles.size(); i += 3)
        result.push_back(turned(triangles, i));
    std::sort(result.begin(), result.end());
    return result;
}

double areaOf(const Corners& t)
{
    return (t[1] - t[0]).cross(t[2] - t[0]).norm() / 2;
}

/// Turned so that the first side is the longest.
Corners onLongestSide(const Corners& t)
{
    std::size_t longest = 0;
    for (std::size_t i = 1; i < 3; ++i)
        if ((t[(i + 1) % 3] - t[i]).norm() > (t[(longest + 1) % 3] - t[longest]).norm())
            longest = i;
    return {t[longest], t[(longest + 1) % 3], t[(longest + 2) % 3]};
}

int stepsOf(double length, double spacing)
{
    constexpr double most = 64;
    return spacing > 0 ? static_cast<int>(std::clamp(std::ceil(length / spacing), 1.0, most)) : 1;
}

/// Calls `visit` with points of the triangle in rows along its longest side, the corners left out; a small one has its
/// middle alone.
template <class Visit>
void visitPoints(const Corners& triangle, double spacing, Visit visit)
{
    const Corners t = onLongestSide(triangle);
    const double length = (t[1] - t[0]).norm();
    const int rows = stepsOf(length > 0 ? areaOf(t) * 2 / length : 0, spacing), most = stepsOf(length, spacing);
    if (rows == 1 && most == 1)
        visit((t[0] + t[1] + t[2]) / 3);
    for (int row = 0; row < rows; ++row) {
        const double up = double(row) / rows;
        const int steps = std::max(1, static_cast<int>(std::lround(most * (1 - up))));
        for (int i = row == 0 ? 1 : 0; i <= (row == 0 ? steps - 1 : steps); ++i)
            visit(t[0] + (t[1] - t[0]) * (1 - up) * i / steps + (t[2] - t[0]) * up);
    }
}

/// The largest of distances, and whether any more is to be measured.
struct Largest {
    double limit;
    double distance = 0;

    bool isBeyond() const { return distance > limit; }
    void take(const NearestTriangles& to, const Eigen::Vector3d& point)
    {
        if (!isBeyond())
            distance = std::max(distance, to.distance(point));
    }
};

/// Measures from `from` to `to`, which has the triangles `known`: those are not asked again.
void measure(const Surface& surface, const Triangles& from, const Triangles& known, const NearestTriangles& to,
             double spacing, Largest& largest)
{
    std::vector<bool> isKnown(surface.positions.size());
    for (const std::uint32_t corner : known)
        isKnown[corner] = true;
    const std::vector<Triple> triples = sorted(known);
    for (std::size_t i = 0; i < from.size() && !largest.isBeyond(); i += 3) {
        if (std::binary_search(triples.begin(), triples.end(), turned(from, i)))
            continue;
        Corners corners;
        for (std::size_t corner = 0; corner < 3; ++corner) {
            corners[corner] = surface.positions[from[i + corner]].cast<double>();
            if (!isKnown[from[i + corner]])
                largest.take(to, corners[corner]);
            isKnown[from[i + corner]] = true;
        }
        visitPoints(corners, spacing, [&](const Eigen::Vector3d& point) { largest.take(to, point); });
    }
}

} // namespace

Deviation::Deviation(const geometry::rays::RayDevice& device, const Surface& surface)
    : m_device(device), m_surface(surface), m_nearest(device, surface.positions, surface.triangles)
{
    const std::size_t count = surface.triangles.size() / 3;
    double area = 0;
    for (std::size_t i = 0; i < count; ++i)
        area += areaOf(m_nearest.corners(i));
    m_spacing = 2 * std::sqrt(area / double(std::max(count, fewestTriangles)));
}

double Deviation::of(const Triangles& triangles, double limit) const
{
    const NearestTriangles others(m_device, m_surface.positions, triangles);
    Largest largest = {limit};
    measure(m_surface, m_surface.triangles, triangles, others, m_spacing, largest);
    measure(m_surface, triangles, m_surface.triangles, m_nearest, m_spacing, largest);
    return largest.distance;
}

} // namespace files::glb::levels
