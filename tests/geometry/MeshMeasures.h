#pragma once

#include "scene/Mesh.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <utility>

/// What the surface of a mesh amounts to.
struct MeshMeasures {
    double area = 0;   ///< in mm2
    double volume = 0; ///< in mm3, positive when the fronts of a closed surface look outward
};

inline MeshMeasures measuresOf(const osg::Mesh& mesh)
{
    using Point = std::array<double, 3>;
    const auto at = [&](std::size_t i) {
        const osg::Vec3f& p = mesh.positions[mesh.triangles[i]];
        return Point{double(p.x), double(p.y), double(p.z)};
    };
    const auto cross = [](const Point& u, const Point& v) {
        return Point{u[1] * v[2] - u[2] * v[1], u[2] * v[0] - u[0] * v[2], u[0] * v[1] - u[1] * v[0]};
    };
    MeshMeasures sum;
    for (std::size_t i = 0; i + 2 < mesh.triangles.size(); i += 3) {
        const Point a = at(i), b = at(i + 1), c = at(i + 2);
        const Point n = cross({b[0] - a[0], b[1] - a[1], b[2] - a[2]}, {c[0] - a[0], c[1] - a[1], c[2] - a[2]});
        sum.area += std::sqrt(n[0] * n[0] + n[1] * n[1] + n[2] * n[2]) / 2;
        sum.volume += (n[0] * a[0] + n[1] * a[1] + n[2] * a[2]) / 6;
    }
    return sum;
}

/// Edges, found by the places of their ends, that are not run through once in each direction: cracks and borders.
inline std::size_t openEdges(const osg::Mesh& mesh)
{
    using Place = std::array<float, 3>;
    std::map<std::pair<Place, Place>, int> balance;
    for (std::size_t i = 0; i < mesh.triangles.size(); ++i) {
        const std::size_t next = i % 3 == 2 ? i - 2 : i + 1;
        const osg::Vec3f& p = mesh.positions[mesh.triangles[i]];
        const osg::Vec3f& q = mesh.positions[mesh.triangles[next]];
        const Place a{p.x, p.y, p.z}, b{q.x, q.y, q.z};
        if (a == b)
            continue;
        balance[std::minmax(a, b)] += a < b ? 1 : -1;
    }
    std::size_t open = 0;
    for (const auto& [edge, count] : balance)
        open += count != 0;
    return open;
}

/// The longest edge of all triangles.
inline double longestEdge(const osg::Mesh& mesh)
{
    double longest = 0;
    for (std::size_t i = 0; i < mesh.triangles.size(); ++i) {
        const osg::Vec3f& p = mesh.positions[mesh.triangles[i]];
        const osg::Vec3f& q = mesh.positions[mesh.triangles[i % 3 == 2 ? i - 2 : i + 1]];
        longest = std::max(longest, std::hypot(double(p.x) - q.x, double(p.y) - q.y, double(p.z) - q.z));
    }
    return longest;
}

/// Whether the triangles `i` and `j`, which both face upward, have more in common than corners and edges when they are
/// looked at from above. Of two that do not, an edge of one has the other on its outer side.
inline bool overlapFromAbove(const osg::Mesh& mesh, std::size_t i, std::size_t j)
{
    const auto corner = [&mesh](std::size_t triangle, std::size_t n) -> const osg::Vec3f& {
        return mesh.positions[mesh.triangles[3 * triangle + n % 3]];
    };
    const auto isApart = [&corner](std::size_t one, std::size_t other) {
        for (std::size_t n = 0; n < 3; ++n) {
            const osg::Vec3f &p = corner(one, n), &q = corner(one, n + 1);
            bool isOutside = true;
            for (std::size_t m = 0; m < 3; ++m) {
                const osg::Vec3f& r = corner(other, m);
                isOutside =
                    isOutside && (double(q.x) - p.x) * (double(r.y) - p.y) <= (double(q.y) - p.y) * (double(r.x) - p.x);
            }
            if (isOutside)
                return true;
        }
        return false;
    };
    return !isApart(i, j) && !isApart(j, i);
}
