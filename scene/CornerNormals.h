#pragma once

#include "host/OSGSystem/Math.h"

#include <cstdint>
#include <span>
#include <vector>

namespace osg
{

/// One polygon: `count` entries of a list of corners from `first` on. `entry` is where it begins in the file's list,
/// and `number` which of the file's faces it is.
struct PolygonFace {
    std::uint32_t first = 0;
    std::uint32_t count = 0;
    std::uint32_t entry = 0;
    std::uint32_t number = 0;
};

/// Which corners stand at each point: those of the point p are `corners` from `first[p]` to `first[p + 1]`.
struct CornersOfPoints {
    CornersOfPoints(std::span<const std::uint32_t> pointOfCorner, std::size_t pointCount);

    std::span<const std::uint32_t> of(std::size_t point) const
    {
        return std::span(corners).subspan(first[point], first[point + 1] - first[point]);
    }

    std::vector<std::uint32_t> first;
    std::vector<std::uint32_t> corners;
};

/// A normal of length 1 for each corner: the sum of those of the faces at its point that turn from its own face by no
/// more than `creaseAngle` (radians), large faces counting more. A face without area has the normal 0.
std::vector<Vec3f> cornerNormals(std::span<const Vec3f> points, std::span<const std::uint32_t> pointOfCorner,
                                 std::span<const PolygonFace> faces, const CornersOfPoints& corners, float creaseAngle);

} // namespace osg
