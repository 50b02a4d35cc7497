#pragma once

#include "geometry/rays/Parts.h"
#include "geometry/rays/Sky.h"

namespace geometry
{

/// Where the rays of a vertex start and which way is up there, in the coordinates of the mesh.
struct Lookout {
    Eigen::Vector3f position;
    Eigen::Vector3f normal; ///< zero where the vertex belongs to no triangle
};

/// The lookouts of all vertices. Each lies a little within the triangles around its vertex, so that a vertex in a
/// corner sees the walls of it.
std::vector<Lookout> lookoutsOf(const osg::Mesh& mesh);

/// How open the places `lookouts` are to the sky when their mesh stands at `placement` on the stage; 1 where the vertex
/// belongs to no triangle. They are added to `sums`, which is as long.
void addOpenness(const rays::Sky& sky, const std::vector<Lookout>& lookouts, const Eigen::Affine3d& placement,
                 std::vector<float>& sums);

} // namespace geometry
