#pragma once

#include "geometry/rays/Parts.h"
#include "geometry/rays/RayDevice.h"

#include <vector>

namespace geometry::rays
{

/// The triangles of a shape as the ray tracer has them, for all uses of the shape.
///
/// Positions and indices are read where they are. Two cases need a copy. The ray tracer loads 16 bytes where an element
/// has 12, so that 4 bytes past the end of an array must be readable: they are, unless the array ends with a page of
/// memory. And positions far from their own origin are moved to it, since rays lose their digits out there.
class Surface
{
public:
    Surface(const RayDevice& device, const Shape& shape);

    RTCScene scene() const { return m_scene.get(); }
    const osg::Mesh& mesh() const { return *m_mesh; }
    /// What was taken off the positions of the mesh.
    const Eigen::Vector3f& origin() const { return m_origin; }
    /// True when a vertex colour lets light through.
    bool hasClearColors() const { return m_hasClearColors; }

private:
    const osg::Vec3f* positions(const Shape& shape);
    const std::uint32_t* indices();

    const osg::Mesh* m_mesh;
    Eigen::Vector3f m_origin = {0, 0, 0};
    bool m_hasClearColors = false;
    std::vector<osg::Vec3f> m_ownPositions;
    std::vector<std::uint32_t> m_ownIndices;
    SceneHandle m_scene;
};

/// True when `bytes` after `end` can be read without leaving the page that the byte before `end` is in.
bool isReadablePast(const void* end, std::size_t bytes);

} // namespace geometry::rays
