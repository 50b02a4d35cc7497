#pragma once

#include "ptx/readers/step/facets/Axes.h"
#include "ptx/readers/step/facets/Surface.h"

#include <unordered_map>
#include <vector>

namespace ptx::step::facets
{

/// The triangles of one surface with what they use alone: a list of points may serve many surfaces.
struct FaceMesh {
    std::vector<Point> points;
    /// Of the points, of length 1; empty when the surface has none, and zero where what is written cannot be one.
    std::vector<Point> normals;
    std::vector<std::uint32_t> triangles; ///< three points each, from 0
};

/// What was found in triangles.
struct FaceCounts {
    std::size_t joints = 0;     ///< triangles of two points, which join strips and are left out
    std::size_t outOfRange = 0; ///< triangles of points that there are not, which are left out
};

/// Sets of axes around each other, the outermost first.
using Places = std::vector<Axes>;

/// `point` of the innermost of `places` in the space around them.
Point placed(Point point, const Places& places);

/// Asked before each triangle: false ends the surface.
using TakeTriangle = std::function<bool()>;

/// The mesh of `surface`, whose list of points is `points`, with the normals that it writes if `withNormals`.
FaceMesh faceMesh(const Surface& surface, const std::vector<Point>& points, const Places& places, bool withNormals,
                  const TakeTriangle& take, FaceCounts& counts);

} // namespace ptx::step::facets
