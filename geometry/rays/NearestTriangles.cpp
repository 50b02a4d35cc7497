#include "geometry/rays/NearestTriangles.h"

#include <Eigen/Geometry>

#include <algorithm>
#include <cmath>
#include <limits>

namespace geometry::rays
{

namespace
{

constexpr double infinity = std::numeric_limits<double>::infinity();

double distanceToSegment(const Eigen::Vector3d& a, const Eigen::Vector3d& b, const Eigen::Vector3d& point)
{
    const Eigen::Vector3d along = b - a;
    const double length = along.squaredNorm();
    const double share = length > 0 ? std::clamp((point - a).dot(along) / length, 0.0, 1.0) : 0.0;
    return (a + share * along - point).norm();
}

/// Whether the foot of the perpendicular from `point` lies within.
bool isAbove(const Corners& t, const Eigen::Vector3d& normal, const Eigen::Vector3d& point)
{
    for (std::size_t i = 0; i < 3; ++i)
        if (normal.dot((t[(i + 1) % 3] - t[i]).cross(point - t[i])) < 0)
            return false;
    return true;
}

/// What a search is for, and what it has found.
struct Search {
    const NearestTriangles& triangles;
    Eigen::Vector3d point;
    double slack;
    double nearest = infinity;
};

bool visit(RTCPointQueryFunctionArguments* arguments)
{
    auto& search = *static_cast<Search*>(arguments->userPtr);
    const double distance = distanceTo(search.triangles.corners(arguments->primID), search.point);
    if (!(distance < search.nearest))
        return false;
    search.nearest = distance;
    arguments->query->radius = static_cast<float>(distance * (1 + 1e-6) + search.slack);
    return true;
}

} // namespace

double distanceTo(const Corners& triangle, const Eigen::Vector3d& point)
{
    const Eigen::Vector3d normal = (triangle[1] - triangle[0]).cross(triangle[2] - triangle[0]);
    const double area = normal.norm();
    if (area > 0 && isAbove(triangle, normal, point))
        return std::abs(normal.dot(point - triangle[0])) / area;
    return std::min({distanceToSegment(triangle[0], triangle[1], point),
                     distanceToSegment(triangle[1], triangle[2], point),
                     distanceToSegment(triangle[2], triangle[0], point)});
}

NearestTriangles::NearestTriangles(const RayDevice& device, std::span<const Eigen::Vector3f> positions,
                                   std::span<const std::uint32_t> triangles)
    : m_positions(positions), m_triangles(triangles), m_scene(device.makeScene())
{
    Eigen::AlignedBox3d box;
    for (const std::uint32_t index : triangles)
        box.extend(positions[index].cast<double>());
    const GeometryHandle geometry(rtcNewGeometry(device.get(), RTC_GEOMETRY_TYPE_TRIANGLE));
    auto* vertices = static_cast<float*>(rtcSetNewGeometryBuffer(
        geometry.get(), RTC_BUFFER_TYPE_VERTEX, 0, RTC_FORMAT_FLOAT3, 3 * sizeof(float), positions.size()));
    auto* indices = static_cast<std::uint32_t*>(rtcSetNewGeometryBuffer(
        geometry.get(), RTC_BUFFER_TYPE_INDEX, 0, RTC_FORMAT_UINT3, 3 * sizeof(std::uint32_t), triangles.size() / 3));
    if (box.isEmpty() || !vertices || !indices) {
        m_scene.reset();
        return;
    }
    m_origin = box.center();
    m_slack = box.diagonal().norm() * 5e-7;
    for (const Eigen::Vector3f& position : positions)
        for (int axis = 0; axis < 3; ++axis)
            *vertices++ = static_cast<float>(double(position[axis]) - m_origin[axis]);
    std::copy(triangles.begin(), triangles.end(), indices);
    rtcCommitGeometry(geometry.get());
    rtcAttachGeometry(m_scene.get(), geometry.get());
    rtcCommitScene(m_scene.get());
}

Corners NearestTriangles::corners(std::size_t triangle) const
{
    const auto corner = [&](std::size_t i) -> Eigen::Vector3d {
        return m_positions[m_triangles[triangle * 3 + i]].cast<double>();
    };
    return {corner(0), corner(1), corner(2)};
}

double NearestTriangles::distance(const Eigen::Vector3d& point) const
{
    Search search = {*this, point, m_slack};
    if (!m_scene)
        return search.nearest;
    const Eigen::Vector3f local = (point - m_origin).cast<float>();
    RTCPointQuery query = {};
    query.x = local.x();
    query.y = local.y();
    query.z = local.z();
    query.radius = std::numeric_limits<float>::infinity();
    RTCPointQueryContext context;
    rtcInitPointQueryContext(&context);
    rtcPointQuery(m_scene.get(), &query, &context, visit, &search);
    return search.nearest;
}

} // namespace geometry::rays
