#include "geometry/rays/RayScene.h"

#include <Eigen/SVD>

#include <algorithm>
#include <cmath>
#include <limits>

namespace geometry::rays
{

namespace
{

/// The least extent of a flattened thing, as part of its largest.
constexpr double leastFlatness = 1e-5;
/// Uses of one shape share their strokes when their scales lie within one step of an octave.
constexpr double stepsAnOctave = 8;
constexpr std::size_t partsAReport = 256;
/// Parts are moved towards the eye by different, invisible amounts, so that of two that lie in one place the same one
/// is seen all over.
constexpr double nudgeStep = 4e-6;
constexpr std::size_t nudges = 16;

/// Rays are taken into the coordinates of a shape with the inverse of its placement. One that flattens space gets a
/// thickness too small to be seen.
Eigen::Affine3d invertible(const Eigen::Affine3d& placement)
{
    const Eigen::JacobiSVD<Eigen::Matrix3d> svd(placement.linear(), Eigen::ComputeFullU | Eigen::ComputeFullV);
    // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): GCC takes what a reference leads to for
    // uninitialised
    const Eigen::Vector3d stretch = svd.singularValues();
    const double least = std::max(stretch[0] * leastFlatness, std::numeric_limits<float>::min() * 1e6);
    if (stretch[2] >= least)
        return placement;
    Eigen::Affine3d result = placement;
    result.linear() = svd.matrixU() * stretch.cwiseMax(least).asDiagonal() * svd.matrixV().transpose();
    return result;
}

/// The inverse transpose but for a factor, which needs no inverse.
Eigen::Matrix3f normalMatrixOf(const Eigen::Affine3d& placement)
{
    const Eigen::Matrix3d m = placement.linear() / placement.linear().cwiseAbs().maxCoeff();
    Eigen::Matrix3d cofactors;
    cofactors << m.col(1).cross(m.col(2)), m.col(2).cross(m.col(0)), m.col(0).cross(m.col(1));
    return (cofactors / cofactors.cwiseAbs().maxCoeff()).cast<float>();
}

GeometryHandle makeInstance(RTCDevice device, RTCScene shape, const Eigen::Affine3d& placement)
{
    GeometryHandle instance(rtcNewGeometry(device, RTC_GEOMETRY_TYPE_INSTANCE));
    const Eigen::Matrix<float, 3, 4> matrix = placement.affine().cast<float>();
    rtcSetGeometryInstancedScene(instance.get(), shape);
    rtcSetGeometryTransform(instance.get(), 0, RTC_FORMAT_FLOAT3X4_COLUMN_MAJOR, matrix.data());
    rtcCommitGeometry(instance.get());
    return instance;
}

/// Rays go through the ray tracer in groups of this size.
constexpr int packetSize = 8;

struct alignas(32) Lanes {
    int valid[packetSize] = {}; ///< -1 for a lane in use
};

RTCRay toEmbree(const Ray& ray, float from, float to)
{
    RTCRay result = {};
    result.org_x = ray.origin.x();
    result.org_y = ray.origin.y();
    result.org_z = ray.origin.z();
    result.dir_x = ray.direction.x();
    result.dir_y = ray.direction.y();
    result.dir_z = ray.direction.z();
    result.tnear = from;
    result.tfar = to;
    result.mask = ~0u;
    return result;
}

void setLane(RTCRay8& packet, std::size_t lane, const RTCRay& ray)
{
    packet.org_x[lane] = ray.org_x;
    packet.org_y[lane] = ray.org_y;
    packet.org_z[lane] = ray.org_z;
    packet.dir_x[lane] = ray.dir_x;
    packet.dir_y[lane] = ray.dir_y;
    packet.dir_z[lane] = ray.dir_z;
    packet.tnear[lane] = ray.tnear;
    packet.tfar[lane] = ray.tfar;
    packet.time[lane] = ray.time;
    packet.mask[lane] = ray.mask;
    packet.id[lane] = ray.id;
    packet.flags[lane] = ray.flags;
}

RTCHit hitOfLane(const RTCHit8& packet, std::size_t lane)
{
    RTCHit hit = {};
    hit.Ng_x = packet.Ng_x[lane];
    hit.Ng_y = packet.Ng_y[lane];
    hit.Ng_z = packet.Ng_z[lane];
    hit.u = packet.u[lane];
    hit.v = packet.v[lane];
    hit.primID = packet.primID[lane];
    hit.geomID = packet.geomID[lane];
    hit.instID[0] = packet.instID[0][lane];
    return hit;
}

bool isHit(const RTCHit& hit)
{
    return hit.geomID != RTC_INVALID_GEOMETRY_ID && hit.instID[0] != RTC_INVALID_GEOMETRY_ID;
}

RTCIntersectContext coherentContext()
{
    RTCIntersectContext context = {};
    rtcInitIntersectContext(&context);
    context.flags = RTC_INTERSECT_CONTEXT_FLAG_COHERENT;
    return context;
}

} // namespace

RayScene::RayScene(const RayDevice& device, const PartList& list, const Eigen::Vector3f& towardsEye,
                   const StrokeRadii& radii, Watch& watch)
    : m_device(device), m_visible(device.makeScene())
{
    m_placed.reserve(list.parts.size());
    for (std::size_t i = 0; i < list.parts.size() && !watch.cancelled() && !device.hasFailed(); ++i) {
        const Part& part = list.parts[i];
        const Eigen::Translation3d nudge(towardsEye.cast<double>() * (nudgeStep * double(i % nudges)));
        const std::size_t first = m_placed.size();
        add(part, list.shapes[part.shape], nudge * invertible(part.placement), radii);
        for (std::size_t placed = first; placed < m_placed.size(); ++placed)
            m_placed[placed].part = static_cast<std::uint32_t>(i);
        if (i % partsAReport == 0)
            watch.report(0.2 * double(i) / double(list.parts.size()));
    }
    commit();
    commitForward();
}

void RayScene::commit()
{
    rtcCommitScene(m_visible.get());
    m_blockers = m_visible.get();
    if (std::all_of(m_placed.begin(), m_placed.end(), [](const Placed& placed) { return placed.isOpaque; }))
        return;
    m_opaque = m_device.makeScene();
    for (std::size_t i = 0; i < m_placed.size(); ++i)
        if (m_placed[i].isOpaque)
            rtcAttachGeometry(m_opaque.get(), rtcGetGeometry(m_visible.get(), static_cast<unsigned>(i)));
    rtcCommitScene(m_opaque.get());
    m_blockers = m_opaque.get();
}

void RayScene::commitForward()
{
    if (std::none_of(m_placed.begin(), m_placed.end(), [](const Placed& placed) { return placed.isForward; }))
        return;
    m_forward = m_device.makeScene();
    for (unsigned i = 0; i < m_placed.size(); ++i)
        if (m_placed[i].isForward)
            rtcAttachGeometryByID(m_forward.get(), rtcGetGeometry(m_visible.get(), i), i);
    rtcCommitScene(m_forward.get());
}

void RayScene::add(const Part& part, const Shape& shape, const Eigen::Affine3d& placement, const StrokeRadii& radii)
{
    if (shape.mesh->triangles.size() >= 3)
        addSurface(part, shape, placement);
    if (!shape.mesh->lines.empty() || !shape.mesh->points.empty())
        addStrokes(part, shape, placement, radii);
}

void RayScene::addSurface(const Part& part, const Shape& shape, const Eigen::Affine3d& placement)
{
    const Surface& surface = m_surfaces.try_emplace(part.shape, m_device, shape).first->second;
    Placed placed;
    placed.surface = &surface;
    placed.look = part.look;
    placed.isForward = part.isForward;
    placed.normalMatrix = normalMatrixOf(placement);
    placed.isOpaque = part.look.alpha >= 1 && !surface.hasClearColors();
    place(surface.scene(), placed, placement * Eigen::Translation3d(surface.origin().cast<double>()));
}

void RayScene::addStrokes(const Part& part, const Shape& shape, const Eigen::Affine3d& placement,
                          const StrokeRadii& radii)
{
    const double scale = std::cbrt(std::abs(placement.linear().determinant()));
    const int step = static_cast<int>(std::lround(std::log2(scale) * stepsAnOctave));
    const float shrink = float(std::exp2(-step / stepsAnOctave));
    const Strokes& strokes =
        m_strokes.try_emplace({part.shape, step}, m_device, shape, radii.line * shrink, radii.point * shrink)
            .first->second;
    Placed placed;
    placed.strokes = &strokes;
    placed.look = part.look;
    placed.isForward = part.isForward;
    placed.normalMatrix = normalMatrixOf(placement);
    place(strokes.scene(), placed, placement * Eigen::Translation3d(strokes.origin().cast<double>()));
}

void RayScene::place(RTCScene shape, const Placed& placed, const Eigen::Affine3d& placement)
{
    const GeometryHandle instance = makeInstance(m_device.get(), shape, placement);
    rtcAttachGeometryByID(m_visible.get(), instance.get(), static_cast<unsigned>(m_placed.size()));
    m_placed.push_back(placed);
}

Hit RayScene::describe(const RTCHit& hit, float distance) const
{
    const Eigen::Vector3f local(hit.Ng_x, hit.Ng_y, hit.Ng_z);
    const Eigen::Vector3f normal = m_placed[hit.instID[0]].normalMatrix * local.normalized();
    return {hit.instID[0], hit.geomID, hit.primID, distance, hit.u, hit.v, normal.normalized()};
}

/// A ray without any part left begins behind its end, which the ray tracer takes for none.
RTCRay RayScene::clipped(const Ray& ray, float from, float to) const
{
    for (const Eigen::Vector4d& half : m_halfSpaces) {
        const double along = half.head<3>().dot(ray.direction.cast<double>());
        const double outside = -(half.head<3>().dot(ray.origin.cast<double>()) + half[3]);
        if (along > 0)
            from = std::max(from, float(outside / along));
        else if (along < 0)
            to = std::min(to, float(outside / along));
        else if (outside > 0)
            to = -1;
    }
    return toEmbree(ray, from, to);
}

std::optional<Hit> RayScene::firstHit(const Ray& ray, float from) const
{
    RTCIntersectContext context = coherentContext();
    RTCRayHit query = {};
    query.ray = clipped(ray, from, std::numeric_limits<float>::infinity());
    query.hit.geomID = RTC_INVALID_GEOMETRY_ID;
    query.hit.instID[0] = RTC_INVALID_GEOMETRY_ID;
    rtcIntersect1(m_visible.get(), &context, &query);
    return isHit(query.hit) ? std::optional(describe(query.hit, query.ray.tfar)) : std::nullopt;
}

void RayScene::firstHits(std::span<const Ray> rays, std::span<std::optional<Hit>> hits) const
{
    std::fill(hits.begin(), hits.end(), std::nullopt);
    meet(m_visible.get(), rays, hits);
    if (m_forward)
        meet(m_forward.get(), rays, hits);
}

/// Rays that meet nothing in `scene` keep their hits.
void RayScene::meet(RTCScene scene, std::span<const Ray> rays, std::span<std::optional<Hit>> hits) const
{
    RTCIntersectContext context = coherentContext();
    for (std::size_t first = 0; first < rays.size(); first += packetSize) {
        const std::size_t count = std::min(rays.size() - first, std::size_t(packetSize));
        Lanes lanes;
        RTCRayHit8 packet = {};
        for (std::size_t i = 0; i < count; ++i) {
            lanes.valid[i] = -1;
            setLane(packet.ray, i, clipped(rays[first + i], 0, std::numeric_limits<float>::infinity()));
            packet.hit.geomID[i] = RTC_INVALID_GEOMETRY_ID;
            packet.hit.instID[0][i] = RTC_INVALID_GEOMETRY_ID;
        }
        rtcIntersect8(lanes.valid, scene, &context, &packet);
        for (std::size_t i = 0; i < count; ++i) {
            if (const RTCHit hit = hitOfLane(packet.hit, i); isHit(hit))
                hits[first + i] = describe(hit, packet.ray.tfar[i]);
        }
    }
}

int RayScene::countBlocked(std::span<const Segment> segments) const
{
    RTCIntersectContext context = {};
    rtcInitIntersectContext(&context);
    int blocked = 0;
    for (std::size_t first = 0; first < segments.size(); first += packetSize) {
        const std::size_t count = std::min(segments.size() - first, std::size_t(packetSize));
        Lanes lanes;
        RTCRay8 packet = {};
        for (std::size_t i = 0; i < count; ++i) {
            lanes.valid[i] = -1;
            setLane(packet, i, clipped(segments[first + i].ray, 0, segments[first + i].length));
        }
        rtcOccluded8(lanes.valid, m_blockers, &context, &packet);
        blocked += static_cast<int>(std::count_if(packet.tfar, packet.tfar + count, [](float end) { return end < 0; }));
    }
    return blocked;
}

} // namespace geometry::rays
