#pragma once

#include "standalone/OSGSystem/Mesh.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace ptx
{

/// Puts a mesh together, face by face. Counts stay within 32 bits; what would go beyond is refused by `hasRoomFor`.
class MeshBuilder
{
public:
    bool hasRoomFor(std::size_t vertices) const;
    bool isEmpty() const { return m_triangles.empty() && m_lines.empty(); }
    std::size_t triangleCount() const { return m_triangles.size() / 3; }

    /// The number of the vertex.
    std::uint32_t addVertex(const osg::Vec3f& position, const osg::Vec3f& normal);
    std::uint32_t addVertex(const osg::Vec3f& position);
    void addTriangle(std::uint32_t a, std::uint32_t b, std::uint32_t c);
    void addLine(std::uint32_t a, std::uint32_t b);
    /// Ends a face: the triangles added since the last one are its range. A face without triangles leaves none.
    void endFace();

    /// The mesh; the builder is empty afterwards. Normals are left out when some vertex has none.
    std::shared_ptr<const osg::Mesh> take();

private:
    std::vector<osg::Vec3f> m_positions;
    std::vector<osg::Vec3f> m_normals;
    std::vector<std::uint32_t> m_triangles;
    std::vector<std::uint32_t> m_lines;
    std::vector<osg::FaceRange> m_faces;
    std::uint32_t m_faceStart = 0;
};

} // namespace ptx
