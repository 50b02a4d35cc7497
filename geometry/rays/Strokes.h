#pragma once

#include "geometry/rays/Parts.h"
#include "geometry/rays/RayDevice.h"

namespace geometry::rays
{

/// The lines and points of a shape as thin rods and small balls.
class Strokes
{
public:
    /// Radii are in the coordinates of the mesh.
    Strokes(const RayDevice& device, const Shape& shape, float lineRadius, float pointRadius);

    RTCScene scene() const { return m_scene.get(); }
    const osg::Mesh& mesh() const { return *m_mesh; }
    /// What was taken off the positions of the mesh.
    const Eigen::Vector3f& origin() const { return m_origin; }
    /// The position whose vertex colour a stroke has. `kind` is the geometry within the scene that was hit.
    std::uint32_t vertexOf(unsigned kind, std::uint32_t primitive) const
    {
        return kind == Lines ? m_lineVertices[primitive] : m_pointVertices[primitive];
    }

private:
    enum Kind : unsigned { Lines, Points };

    void addLines(const RayDevice& device, float radius);
    void addPoints(const RayDevice& device, float radius);

    const osg::Mesh* m_mesh;
    Eigen::Vector3f m_origin;
    std::vector<std::uint32_t> m_lineVertices;
    std::vector<std::uint32_t> m_pointVertices;
    SceneHandle m_scene;
};

} // namespace geometry::rays
