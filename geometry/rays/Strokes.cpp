#include "geometry/rays/Strokes.h"

namespace geometry::rays
{

namespace
{

bool isUsable(const osg::Mesh& mesh, std::uint32_t index)
{
    return index < mesh.positions.size() && isDrawable(mesh.positions[index]);
}

Eigen::Vector4f* newVertices(RTCGeometry geometry, std::size_t count)
{
    return static_cast<Eigen::Vector4f*>(rtcSetNewGeometryBuffer(geometry, RTC_BUFFER_TYPE_VERTEX, 0, RTC_FORMAT_FLOAT4,
                                                                 sizeof(Eigen::Vector4f), count));
}

Eigen::Vector4f ballAt(const osg::Vec3f& position, const Eigen::Vector3f& origin, float radius)
{
    const Eigen::Vector3f center = osg::toEigen(position) - origin;
    return {center.x(), center.y(), center.z(), radius};
}

} // namespace

Strokes::Strokes(const RayDevice& device, const Shape& shape, float lineRadius, float pointRadius)
    : m_mesh(shape.mesh.get()), m_origin(shape.bounds.center()), m_scene(device.makeScene())
{
    addLines(device, lineRadius);
    addPoints(device, pointRadius);
    rtcCommitScene(m_scene.get());
}

void Strokes::addLines(const RayDevice& device, float radius)
{
    std::vector<std::uint32_t> ends;
    for (std::size_t i = 0; i + 1 < m_mesh->lines.size(); i += 2)
        if (isUsable(*m_mesh, m_mesh->lines[i]) && isUsable(*m_mesh, m_mesh->lines[i + 1]))
            ends.insert(ends.end(), {m_mesh->lines[i], m_mesh->lines[i + 1]});
    if (ends.empty())
        return;
    const GeometryHandle geometry(rtcNewGeometry(device.get(), RTC_GEOMETRY_TYPE_ROUND_LINEAR_CURVE));
    Eigen::Vector4f* vertices = newVertices(geometry.get(), ends.size());
    auto* starts = static_cast<std::uint32_t*>(rtcSetNewGeometryBuffer(
        geometry.get(), RTC_BUFFER_TYPE_INDEX, 0, RTC_FORMAT_UINT, sizeof(std::uint32_t), ends.size() / 2));
    if (!vertices || !starts)
        return;
    for (std::size_t i = 0; i < ends.size(); ++i)
        vertices[i] = ballAt(m_mesh->positions[ends[i]], m_origin, radius);
    for (std::size_t i = 0; i < ends.size() / 2; ++i) {
        starts[i] = static_cast<std::uint32_t>(2 * i);
        m_lineVertices.push_back(ends[2 * i]);
    }
    rtcCommitGeometry(geometry.get());
    rtcAttachGeometryByID(m_scene.get(), geometry.get(), Lines);
}

void Strokes::addPoints(const RayDevice& device, float radius)
{
    for (const std::uint32_t index : m_mesh->points)
        if (isUsable(*m_mesh, index))
            m_pointVertices.push_back(index);
    if (m_pointVertices.empty())
        return;
    const GeometryHandle geometry(rtcNewGeometry(device.get(), RTC_GEOMETRY_TYPE_SPHERE_POINT));
    Eigen::Vector4f* vertices = newVertices(geometry.get(), m_pointVertices.size());
    if (!vertices)
        return;
    for (std::size_t i = 0; i < m_pointVertices.size(); ++i)
        vertices[i] = ballAt(m_mesh->positions[m_pointVertices[i]], m_origin, radius);
    rtcCommitGeometry(geometry.get());
    rtcAttachGeometryByID(m_scene.get(), geometry.get(), Points);
}

} // namespace geometry::rays
