#pragma once

#include "scene/MeshArrays.h"

#include <cstdint>
#include <memory>

namespace ptx::model
{

/// Puts a mesh together, face by face. Counts stay within 32 bits; what would go beyond is refused by `hasRoomFor`.
/// What some vertices lack besides their position, none has in the end.
class MeshBuilder
{
public:
    bool hasRoomFor(std::size_t vertices) const;
    bool isEmpty() const { return m_arrays.triangles.empty() && m_arrays.lines.empty() && m_arrays.points.empty(); }
    std::size_t triangleCount() const { return m_arrays.triangles.size() / 3; }

    /// The number of the vertex.
    std::uint32_t addVertex(const osg::Vec3f& position, const osg::Vec3f& normal);
    std::uint32_t addVertex(const osg::Vec3f& position);
    /// Of the vertex that was added last: a display colour, and a place in a picture.
    void addColor(const osg::Color4f& color) { m_arrays.colors.push_back(color); }
    void addTexCoord(const osg::Vec2f& place) { m_arrays.texCoords.push_back(place); }
    void addTriangle(std::uint32_t a, std::uint32_t b, std::uint32_t c);
    void addLine(std::uint32_t a, std::uint32_t b);
    void addPoint(std::uint32_t a) { m_arrays.points.push_back(a); }
    /// Ends a face: the triangles added since the last one are its range. A face without triangles leaves none.
    void endFace();

    /// The mesh; the builder is empty afterwards.
    std::shared_ptr<const osg::Mesh> take();

private:
    osg::MeshArrays m_arrays;
    std::uint32_t m_faceStart = 0;
};

} // namespace ptx::model
