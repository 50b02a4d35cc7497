#include "render/Shading.h"

#include "geometry/rays/LightColor.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace render
{

namespace
{

/// Together they stay near 1 at most, so that white things do not burn out.
constexpr float keyStrength = 0.60f;
constexpr float fillStrength = 0.13f;
constexpr float skyBelow = 0.17f;
constexpr float skyAbove = 0.41f;
/// The part of the key light that corners lose as well, because they would look flat otherwise.
constexpr float keyLostInCorners = 0.35f;
constexpr float glossStrength = 0.04f;

using Corners = std::array<std::uint32_t, 3>;

/// Only triangles whose indices are in range are ever hit.
Corners cornersOf(const osg::Mesh& mesh, std::uint32_t triangle)
{
    const std::uint32_t* first = mesh.triangles.data() + std::size_t(3) * triangle;
    return {first[0], first[1], first[2]};
}

std::uint32_t faceOf(const osg::Mesh& mesh, std::uint32_t triangle)
{
    const auto after =
        std::upper_bound(mesh.faces.begin(), mesh.faces.end(), triangle,
                         [](std::uint32_t value, const osg::FaceRange& face) { return value < face.first; });
    return static_cast<std::uint32_t>(after - mesh.faces.begin());
}

Eigen::Vector3f turnedTo(const Eigen::Vector3f& normal, const Eigen::Vector3f& side)
{
    return normal.dot(side) < 0 ? Eigen::Vector3f(-normal) : normal;
}

Eigen::Vector3f smoothNormal(const Placed& placed, const Corners& corners, const Hit& hit, const Eigen::Vector3f& flat)
{
    const osg::Buffer<osg::Vec3f>& normals = placed.surface->mesh().normals;
    if (normals.size() != placed.surface->mesh().positions.size())
        return flat;
    const Eigen::Vector3f local = osg::toEigen(normals[corners[0]]) * (1 - hit.u - hit.v) +
                                  osg::toEigen(normals[corners[1]]) * hit.u + osg::toEigen(normals[corners[2]]) * hit.v;
    const Eigen::Vector3f normal = placed.normalMatrix * local.normalized();
    const float length = normal.norm();
    return length > 0 && std::isfinite(length) ? turnedTo(normal / length, flat) : flat;
}

void setColor(SeenPoint& point, const osg::Color4f& color, float alpha)
{
    point.color = toLight(osg::Color3f{color.red, color.green, color.blue});
    point.alpha = alpha * (std::isfinite(color.alpha) ? std::clamp(color.alpha, 0.0f, 1.0f) : 1.0f);
}

void addColor(osg::Color4f& sum, const osg::Color4f& color, float weight)
{
    sum.red += color.red * weight;
    sum.green += color.green * weight;
    sum.blue += color.blue * weight;
    sum.alpha += color.alpha * weight;
}

float opennessAt(const osg::Mesh& mesh, const Corners& corners, const Hit& hit)
{
    const float sum = mesh.occlusion[corners[0]] * (1 - hit.u - hit.v) + mesh.occlusion[corners[1]] * hit.u +
                      mesh.occlusion[corners[2]] * hit.v;
    return std::isfinite(sum) ? std::clamp(sum, 0.0f, 1.0f) : 1.0f;
}

void completeSurface(SeenPoint& point, const Placed& placed, const Hit& hit)
{
    const osg::Mesh& mesh = placed.surface->mesh();
    const Corners corners = cornersOf(mesh, hit.primitive);
    point.normal = smoothNormal(placed, corners, hit, point.flatNormal);
    point.face = faceOf(mesh, hit.primitive);
    if (mesh.occlusion.size() == mesh.positions.size())
        point.openness = opennessAt(mesh, corners, hit);
    if (mesh.colors.size() != mesh.positions.size())
        return;
    osg::Color4f color = {0, 0, 0, 0};
    addColor(color, mesh.colors[corners[0]], 1 - hit.u - hit.v);
    addColor(color, mesh.colors[corners[1]], hit.u);
    addColor(color, mesh.colors[corners[2]], hit.v);
    setColor(point, color, placed.look.alpha);
}

void completeStroke(SeenPoint& point, const Placed& placed, const Hit& hit)
{
    point.isStroke = true;
    const osg::Mesh& mesh = placed.strokes->mesh();
    if (mesh.colors.size() == mesh.positions.size())
        setColor(point, mesh.colors[placed.strokes->vertexOf(hit.kind, hit.primitive)], placed.look.alpha);
}

float cosine(const Eigen::Vector3f& a, const Eigen::Vector3f& b)
{
    return std::max(a.dot(b), 0.0f);
}

/// The power of 24.
float glossOf(float cosineToMirror)
{
    const float p2 = cosineToMirror * cosineToMirror, p4 = p2 * p2, p8 = p4 * p4;
    return p8 * p8 * p8;
}

} // namespace

SeenPoint seenPoint(const RayScene& scene, const Hit& hit, const Ray& ray)
{
    const Placed& placed = scene.placed(hit.placed);
    SeenPoint point;
    point.position = ray.origin + ray.direction * hit.distance;
    point.flatNormal = turnedTo(hit.normal, -ray.direction);
    point.normal = point.flatNormal;
    point.color = placed.look.diffuse;
    point.emission = placed.look.emission;
    point.alpha = placed.look.alpha;
    // What comes before the rest is a drawing, which nothing around it darkens.
    point.isStroke = placed.isForward;
    if (placed.surface)
        completeSurface(point, placed, hit);
    else
        completeStroke(point, placed, hit);
    return point;
}

Lamps::Lamps(const Camera& camera)
    : m_key((camera.right * -0.4f + camera.up * 0.6f + camera.back * 0.8f).normalized()),
      m_fill((camera.right * 0.8f + camera.up * 0.1f + camera.back * 0.5f).normalized())
{
}

Light Lamps::on(const SeenPoint& point, const Eigen::Vector3f& toEye) const
{
    const float key = keyStrength * cosine(point.normal, m_key);
    const float fill = fillStrength * cosine(point.normal, m_fill);
    const float sky = skyBelow + (skyAbove - skyBelow) * (point.normal.z() + 1) / 2;
    const float gloss = glossStrength * glossOf(cosine(point.normal, (m_key + toEye).normalized()));
    const Eigen::Vector3f shine = Eigen::Vector3f::Constant(gloss);
    return {point.color * (key * (1 - keyLostInCorners) + fill) + point.emission + shine,
            point.color * (sky + key * keyLostInCorners)};
}

} // namespace render
