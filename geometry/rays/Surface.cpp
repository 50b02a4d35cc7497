#include "geometry/rays/Surface.h"

#include <algorithm>

namespace geometry::rays
{

namespace
{

constexpr std::size_t overread = 4;
constexpr std::uintptr_t pageSize = 4096;
/// From this ratio of distance to size on, positions are moved to their origin.
constexpr float farRatio = 64;

bool isFarOut(const Eigen::AlignedBox3f& bounds)
{
    const float distance = bounds.min().cwiseAbs().cwiseMax(bounds.max().cwiseAbs()).maxCoeff();
    return distance > farRatio * bounds.sizes().maxCoeff();
}

bool isClear(const osg::Color4f& color)
{
    return color.alpha < 1;
}

} // namespace

bool isReadablePast(const void* end, std::size_t bytes)
{
    const std::uintptr_t last = reinterpret_cast<std::uintptr_t>(end) - 1;
    return last % pageSize + bytes < pageSize;
}

Surface::Surface(const RayDevice& device, const Shape& shape)
    : m_mesh(shape.mesh.get()), m_hasClearColors(std::any_of(m_mesh->colors.begin(), m_mesh->colors.end(), isClear)),
      m_scene(device.makeScene())
{
    const GeometryHandle geometry(rtcNewGeometry(device.get(), RTC_GEOMETRY_TYPE_TRIANGLE));
    rtcSetSharedGeometryBuffer(geometry.get(), RTC_BUFFER_TYPE_VERTEX, 0, RTC_FORMAT_FLOAT3, positions(shape), 0,
                               sizeof(osg::Vec3f), m_mesh->positions.size());
    rtcSetSharedGeometryBuffer(geometry.get(), RTC_BUFFER_TYPE_INDEX, 0, RTC_FORMAT_UINT3, indices(), 0,
                               3 * sizeof(std::uint32_t), m_mesh->triangles.size() / 3);
    rtcCommitGeometry(geometry.get());
    rtcAttachGeometry(m_scene.get(), geometry.get());
    rtcCommitScene(m_scene.get());
}

const osg::Vec3f* Surface::positions(const Shape& shape)
{
    const osg::Buffer<osg::Vec3f>& all = m_mesh->positions;
    const bool moves = isFarOut(shape.bounds);
    if (!moves && isReadablePast(all.end(), overread))
        return all.data();
    if (moves)
        m_origin = shape.bounds.center();
    m_ownPositions.reserve(all.size() + 1);
    for (const osg::Vec3f& p : all)
        m_ownPositions.push_back({p.x - m_origin.x(), p.y - m_origin.y(), p.z - m_origin.z()});
    m_ownPositions.push_back({});
    return m_ownPositions.data();
}

const std::uint32_t* Surface::indices()
{
    const osg::Buffer<std::uint32_t>& all = m_mesh->triangles;
    if (isReadablePast(all.end(), overread))
        return all.data();
    m_ownIndices.reserve(all.size() + 1);
    m_ownIndices.assign(all.begin(), all.end());
    m_ownIndices.push_back(0);
    return m_ownIndices.data();
}

} // namespace geometry::rays
