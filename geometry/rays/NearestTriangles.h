#pragma once

#include "geometry/rays/RayDevice.h"

#include <Eigen/Core>

#include <array>
#include <cstdint>
#include <span>
#include <vector>

namespace geometry::rays
{

/// The corners of a triangle.
using Corners = std::array<Eigen::Vector3d, 3>;

/// How far `point` is from a triangle, which may have no area.
double distanceTo(const Corners& triangle, const Eigen::Vector3d& point);

/// Triangles that tell how far points are from them.
class NearestTriangles
{
public:
    /// `triangles` are threes of indices into `positions`, both of which, as `device`, must outlive this object. With
    /// errors on the device it finds nothing.
    NearestTriangles(const RayDevice& device, std::span<const Eigen::Vector3f> positions,
                     std::span<const std::uint32_t> triangles);

    /// From `point` to the nearest triangle; infinite where there is none. The distance is that of a triangle, and of
    /// none that is farther by more than a millionth of the size of all.
    double distance(const Eigen::Vector3d& point) const;

    /// The triangle of this number.
    Corners corners(std::size_t triangle) const;

private:
    std::span<const Eigen::Vector3f> m_positions;
    std::span<const std::uint32_t> m_triangles;
    Eigen::Vector3d m_origin = {0, 0, 0}; ///< what is taken off before anything is told to the ray tracer
    double m_slack = 0;                   ///< how far the ray tracer may be off
    SceneHandle m_scene;                  ///< null when there is nothing to find
};

} // namespace geometry::rays
