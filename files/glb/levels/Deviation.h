#pragma once

#include "files/glb/levels/Reduction.h"
#include "geometry/rays/NearestTriangles.h"

namespace files::glb::levels
{

/// Measures how far other triangles over the vertices of a surface are from it.
class Deviation
{
public:
    /// The arguments must outlive this object.
    Deviation(const geometry::rays::RayDevice& device, const Surface& surface);

    /// The largest distance between the surface and `triangles`: of the vertices of either, and of points on the
    /// triangles, to the nearest point of the other. The points are about as close as the vertices of the surface
    /// would be if all its triangles had one size, and there were 800 at least. Ends at the first distance beyond
    /// `limit`; infinite when one of the two is empty.
    double of(const Triangles& triangles, double limit) const;

private:
    const geometry::rays::RayDevice& m_device;
    const Surface& m_surface;
    geometry::rays::NearestTriangles m_nearest;
    double m_spacing = 0; ///< between points on triangles
};

} // namespace files::glb::levels
