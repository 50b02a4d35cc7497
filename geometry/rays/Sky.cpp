#include "geometry/rays/Sky.h"

#include <cmath>

namespace geometry::rays
{

namespace
{

constexpr int patternSize = Sky::patternSide * Sky::patternSide;
constexpr float pi = 3.14159265f;

/// The additive sequence of the generalised golden ratio for three dimensions (M. Roberts, 2018): any stretch of it
/// covers the unit cube evenly.
Eigen::Vector3f evenPoint(int index)
{
    const double n = index + 0.5;
    const Eigen::Vector3d p = n * Eigen::Vector3d(0.8191725133961645, 0.6710436067037893, 0.5497004779019703);
    return (p - p.array().floor().matrix()).cast<float>();
}

/// Two directions that make a basis with `n` (T. Duff et al., "Building an Orthonormal Basis, Revisited", 2017).
void completeBasis(const Eigen::Vector3f& n, Eigen::Vector3f& s, Eigen::Vector3f& t)
{
    const float sign = std::copysign(1.0f, n.z());
    const float a = -1 / (sign + n.z());
    const float b = n.x() * n.y() * a;
    s = {1 + sign * n.x() * n.x() * a, sign * b, -sign * n.x()};
    t = {b, sign + n.y() * n.y() * a, -n.y()};
}

} // namespace

Sky::Sky(const RayScene& scene, int raysPerPixel) : m_scene(scene), m_raysPerPixel(raysPerPixel)
{
    m_probes.reserve(std::size_t(raysPerPixel) * patternSize);
    for (int i = 0; i < raysPerPixel * patternSize; ++i) {
        const Eigen::Vector3f point = evenPoint(i);
        const float angle = 2 * pi * point.x();
        const float radius = std::sqrt(point.y());
        m_probes.push_back({{radius * std::cos(angle), radius * std::sin(angle), std::sqrt(1 - point.y())}, point.z()});
    }
}

float Sky::openness(const Eigen::Vector3f& position, const Eigen::Vector3f& normal, float reach,
                    const SkyRays& rays) const
{
    if (rays.count == 0)
        return 1;
    Eigen::Vector3f s, t;
    completeBasis(normal, s, t);
    thread_local std::vector<Segment> segments;
    segments.clear();
    for (int i = rays.first; i < rays.first + rays.count; ++i) {
        const Probe& probe = m_probes[std::size_t(i % m_raysPerPixel) * patternSize + std::size_t(rays.pixel)];
        const Eigen::Vector3f direction =
            s * probe.direction.x() + t * probe.direction.y() + normal * probe.direction.z();
        segments.push_back({{position + normal * rayLift, direction}, reach * probe.reach});
    }
    return 1 - float(m_scene.countBlocked(segments)) / float(rays.count);
}

} // namespace geometry::rays
