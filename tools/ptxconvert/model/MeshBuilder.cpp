#include "tools/ptxconvert/model/MeshBuilder.h"

#include <limits>

namespace ptx
{

bool MeshBuilder::hasRoomFor(std::size_t vertices) const
{
    return m_positions.size() + vertices < std::numeric_limits<std::uint32_t>::max();
}

std::uint32_t MeshBuilder::addVertex(const osg::Vec3f& position, const osg::Vec3f& normal)
{
    m_normals.push_back(normal);
    return addVertex(position);
}

std::uint32_t MeshBuilder::addVertex(const osg::Vec3f& position)
{
    m_positions.push_back(position);
    return static_cast<std::uint32_t>(m_positions.size() - 1);
}

void MeshBuilder::addTriangle(std::uint32_t a, std::uint32_t b, std::uint32_t c)
{
    m_triangles.insert(m_triangles.end(), {a, b, c});
}

void MeshBuilder::addLine(std::uint32_t a, std::uint32_t b)
{
    m_lines.insert(m_lines.end(), {a, b});
}

void MeshBuilder::endFace()
{
    const auto now = static_cast<std::uint32_t>(triangleCount());
    if (now > m_faceStart)
        m_faces.push_back({m_faceStart, now - m_faceStart});
    m_faceStart = now;
}

std::shared_ptr<const osg::Mesh> MeshBuilder::take()
{
    auto mesh = std::make_shared<osg::Mesh>();
    if (m_normals.size() == m_positions.size())
        mesh->normals = std::move(m_normals);
    if (m_colors.size() == m_positions.size())
        mesh->colors = std::move(m_colors);
    if (m_texCoords.size() == m_positions.size())
        mesh->texCoords = std::move(m_texCoords);
    mesh->positions = std::move(m_positions);
    mesh->triangles = std::move(m_triangles);
    mesh->lines = std::move(m_lines);
    mesh->points = std::move(m_points);
    mesh->faces = std::move(m_faces);
    *this = MeshBuilder();
    return mesh;
}

} // namespace ptx
