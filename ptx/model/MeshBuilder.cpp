#include "ptx/model/MeshBuilder.h"

#include <limits>

namespace ptx::model
{

bool MeshBuilder::hasRoomFor(std::size_t vertices) const
{
    return m_arrays.positions.size() + vertices < std::numeric_limits<std::uint32_t>::max();
}

std::uint32_t MeshBuilder::addVertex(const osg::Vec3f& position, const osg::Vec3f& normal)
{
    m_arrays.normals.push_back(normal);
    return addVertex(position);
}

std::uint32_t MeshBuilder::addVertex(const osg::Vec3f& position)
{
    m_arrays.positions.push_back(position);
    return static_cast<std::uint32_t>(m_arrays.positions.size() - 1);
}

void MeshBuilder::addTriangle(std::uint32_t a, std::uint32_t b, std::uint32_t c)
{
    m_arrays.triangles.insert(m_arrays.triangles.end(), {a, b, c});
}

void MeshBuilder::addLine(std::uint32_t a, std::uint32_t b)
{
    m_arrays.lines.insert(m_arrays.lines.end(), {a, b});
}

void MeshBuilder::endFace()
{
    const auto now = static_cast<std::uint32_t>(triangleCount());
    if (now > m_faceStart)
        m_arrays.faces.push_back({m_faceStart, now - m_faceStart});
    m_faceStart = now;
}

std::shared_ptr<const osg::Mesh> MeshBuilder::take()
{
    auto mesh = std::make_shared<osg::Mesh>(osg::meshOf(std::move(m_arrays)));
    *this = MeshBuilder();
    return mesh;
}

} // namespace ptx::model
