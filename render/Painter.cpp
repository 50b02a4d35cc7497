#include "render/Painter.h"

#include "geometry/rays/LightColor.h"

#include <cmath>

namespace render
{

namespace
{

constexpr int mostLayers = 32;
constexpr float leastWeight = 0.01f;
/// The next layer is looked for this far behind the last one.
constexpr float layerGap = 1e-5f;
/// Brightness of strokes at most on a bright backdrop, at least on a dark one.
constexpr float brightestOnBright = 0.18f;
constexpr float darkestOnDark = 0.25f;
constexpr float brightBackdrop = 0.35f;

/// Clear things are denser where they are seen at a slant, as glass is.
float coverage(const SeenPoint& point, const Eigen::Vector3f& toEye)
{
    if (point.alpha >= 1 || point.isStroke)
        return point.alpha;
    const float facing = std::max(std::abs(point.normal.dot(toEye)), 0.25f);
    return 1 - std::pow(1 - point.alpha, 1 / facing);
}

void tintLight(Light& light, const Eigen::Vector3f& tint)
{
    light.fixed = light.fixed.cwiseProduct(tint);
    light.ambient = light.ambient.cwiseProduct(tint);
}

void keepPlace(Sight& sight, const Eigen::Vector3f& position, const Eigen::Vector3f& normal)
{
    if (sight.weight > 0)
        return;
    sight.position = position;
    sight.normal = normal;
}

} // namespace

FirstHit Painter::describe(const Ray& ray, const std::optional<Hit>& hit) const
{
    FirstHit first;
    if (!hit)
        return first;
    const SeenPoint point = seenPoint(m_scene, *hit, ray);
    first.position = point.position;
    first.normal = point.normal;
    first.color = point.color;
    first.placed = point.isStroke ? FirstHit::Stroke : hit->placed;
    first.face = point.face;
    first.isOpaque = point.alpha >= 1;
    if (isStudio(point)) {
        const studio::BaseColor base = m_studio->baseColor(studioPlace(point, *hit, ray));
        first.color = base.color;
        first.isOpaque = base.alpha >= 1;
    }
    return first;
}

studio::StudioPlace Painter::studioPlace(const SeenPoint& point, const Hit& hit, const Ray& ray) const
{
    const float pixelSize = 2 * m_camera.halfHeightAt(point.position) / float(m_picture.height);
    return {hit, -ray.direction, point.normal, point.flatNormal, pixelSize};
}

Painter::Layer Painter::layerAt(const Hit& hit, const Ray& ray) const
{
    Layer layer;
    layer.point = seenPoint(m_scene, hit, ray);
    if (isStudio(layer.point)) {
        const studio::StudioSight sight = m_studio->light(studioPlace(layer.point, hit, ray));
        layer.covered = sight.covered;
        layer.light = {sight.fixed, sight.open};
        layer.tint = sight.tint;
        return layer;
    }
    layer.covered = coverage(layer.point, -ray.direction);
    if (layer.covered > 0 && !layer.point.isStroke)
        layer.light = m_lamps.on(layer.point, -ray.direction);
    return layer;
}

Sight Painter::see(const Ray& ray, const std::optional<Hit>& first, const Eigen::Vector3f& backdrop,
                   const SkyRays& skyRays) const
{
    Sight sight;
    float clear = 1;
    Eigen::Vector3f tint(1, 1, 1);
    std::optional<Hit> hit = first;
    for (int met = 0; hit && met < mostLayers && clear > leastWeight; ++met) {
        Layer layer = layerAt(*hit, ray);
        if (m_studio)
            tintLight(layer.light, tint);
        addLayer(sight, layer, clear * layer.covered, skyRays);
        clear *= 1 - layer.covered;
        tint = tint.cwiseProduct(layer.tint);
        if (clear > leastWeight)
            hit = m_scene.firstHit(ray, hit->distance + layerGap);
    }
    addBackdrop(sight, ray, backdrop.cwiseProduct(tint), clear, skyRays);
    return sight;
}

void Painter::addLayer(Sight& sight, const Layer& layer, float weight, const SkyRays& skyRays) const
{
    const SeenPoint& point = layer.point;
    if (weight <= 0)
        return;
    if (point.isStroke) {
        sight.light.fixed += strokeLight(point.color + point.emission) * weight;
        return;
    }
    keepPlace(sight, point.position, point.normal);
    sight.light += layer.light * weight;
    const float openness =
        point.openness ? *point.openness : m_sky.openness(point.position, point.flatNormal, skyReach, skyRays);
    sight.openness += weight * openness;
    sight.weight += weight;
}

void Painter::addBackdrop(Sight& sight, const Ray& ray, const Eigen::Vector3f& backdrop, float weight,
                          const SkyRays& skyRays) const
{
    if (weight <= 0)
        return;
    const std::optional<Ground::Place> place = m_ground ? m_ground->placeOn(ray) : std::nullopt;
    if (!place) {
        sight.light.fixed += backdrop * weight;
        sight.clear += weight;
        return;
    }
    const Eigen::Vector3f up = Eigen::Vector3f::UnitZ();
    keepPlace(sight, place->position, up);
    sight.light += Light{backdrop * (1 - place->depth), backdrop * place->depth} * weight;
    sight.clear += (1 - place->depth) * weight;
    sight.clearAmbient += place->depth * weight;
    sight.openness += weight * m_sky.openness(place->position, up, groundReach, skyRays);
    sight.weight += weight;
}

Eigen::Vector3f Painter::strokeLight(const Eigen::Vector3f& color) const
{
    const float bright = luminance(color);
    if (m_picture.backdropLuminance > brightBackdrop)
        return bright > brightestOnBright ? Eigen::Vector3f(color * (brightestOnBright / bright)) : color;
    return bright < darkestOnDark ? Eigen::Vector3f(color.array() + (darkestOnDark - bright)) : color;
}

} // namespace render
