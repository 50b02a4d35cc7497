#include "render/studio/StudioShading.h"

#include "render/studio/Reflectance.h"
#include "render/studio/TexturePlace.h"
#include "scene/ColorSpace.h"

#include <algorithm>
#include <cmath>

namespace render::studio
{

namespace
{

using Slot = osg::TextureSlot;

constexpr float coatReflectance = 0.04f;
/// Normals that are mapped away from the eye, and places that are seen at a slant.
constexpr float leastFacing = 0.01f;
/// Textures are not blurred further than this where they are seen at a slant.
constexpr float leastSlant = 0.05f;

float facingOf(const Eigen::Vector3f& normal, const Eigen::Vector3f& towardsEye)
{
    return std::clamp(normal.dot(towardsEye), leastFacing, 1.0f);
}

/// One channel of a texture; 1 without it.
float channel(const StudioMaterial& material, Slot slot, int index, const TexturePlace& textures)
{
    const std::optional<SurfaceTexture>& texture = material.texture(slot);
    const std::optional<Eigen::Vector4f> value = texture ? textures.read(*texture) : std::nullopt;
    return value ? (*value)[index] : 1;
}

Eigen::Vector3f color(const StudioMaterial& material, Slot slot, const TexturePlace& textures)
{
    const std::optional<SurfaceTexture>& texture = material.texture(slot);
    const std::optional<Eigen::Vector4f> value = texture ? textures.read(*texture) : std::nullopt;
    return value ? Eigen::Vector3f(value->head<3>()) : Eigen::Vector3f(1, 1, 1);
}

float coverage(const osg::PhysicalSurface& surface, float alpha)
{
    switch (surface.alphaMode) {
    case osg::AlphaMode::Mask:
        return alpha >= surface.alphaCutoff ? 1 : 0;
    case osg::AlphaMode::Blend:
        return alpha;
    case osg::AlphaMode::Opaque:
        break;
    }
    return 1;
}

/// Red, green and blue as light, and alpha, between the vertices of the triangle.
Eigen::Vector4f vertexColor(const osg::Mesh& mesh, const geometry::rays::Hit& hit)
{
    const std::uint32_t* corners = mesh.triangles.data() + std::size_t(3) * hit.primitive;
    const float weights[] = {1 - hit.u - hit.v, hit.u, hit.v};
    Eigen::Vector4f sum = Eigen::Vector4f::Zero();
    for (int i = 0; i < 3; ++i) {
        const osg::Color4f& corner = mesh.colors[corners[i]];
        const osg::Color3f light = osg::linearFromDisplay(osg::Color3f{corner.red, corner.green, corner.blue});
        const float alpha = std::isfinite(corner.alpha) ? std::clamp(corner.alpha, 0.0f, 1.0f) : 1.0f;
        sum +=
            Eigen::Vector4f(std::min(light.red, 1.0f), std::min(light.green, 1.0f), std::min(light.blue, 1.0f), alpha) *
            weights[i];
    }
    return sum;
}

/// What is no metal reflects at right angles.
Eigen::Vector3f dielectricReflectance(const osg::PhysicalSurface& surface)
{
    const float step = surface.refraction == 0 ? 1 : (surface.refraction - 1) / (surface.refraction + 1);
    const osg::Color3f& tint = surface.specularColor;
    return Eigen::Vector3f(tint.red, tint.green, tint.blue) * (step * step);
}

/// How much of what is reflected a crevice hides that hides `1 - open` of what comes from all sides (Lagarde 2014).
float reflectionOpenness(float facing, float open, float roughness)
{
    return std::clamp(std::pow(facing + open, std::exp2(-16 * roughness - 1)) - 1 + open, 0.0f, 1.0f);
}

} // namespace

struct StudioShading::Local {
    BaseColor base;
    Eigen::Vector3f normal;
    float metalness, roughness;
    Eigen::Vector3f reflectance; ///< where it is no metal, at right angles
    float grazing;               ///< the same at grazing ones
    float transmission;
    float open; ///< as the occlusion texture says
    float coat, coatRoughness;
    Eigen::Vector3f coatNormal;
};

TexturePlace StudioShading::texturePlace(const StudioPlace& place) const
{
    const geometry::rays::Placed& placed = m_scene.placed(place.hit.placed);
    const float slant = std::max(std::abs(place.flatNormal.dot(place.towardsEye)), leastSlant);
    return {placed.surface->mesh(), place.hit, m_list.parts[placed.part].placement, place.pixelSize / std::sqrt(slant)};
}

/// Fronts run counter-clockwise in the mesh, also where its placement mirrors it.
bool StudioShading::isBack(const StudioPlace& place) const
{
    const bool runsClockwise = place.hit.normal.dot(place.towardsEye) < 0;
    const geometry::rays::Placed& placed = m_scene.placed(place.hit.placed);
    return runsClockwise != (m_list.parts[placed.part].placement.linear().determinant() < 0);
}

BaseColor StudioShading::baseColor(const StudioPlace& place) const
{
    const StudioMaterial& material = m_materials.of(m_scene.placed(place.hit.placed).part);
    return baseColor(place, material, texturePlace(place));
}

BaseColor StudioShading::baseColor(const StudioPlace& place, const StudioMaterial& material,
                                   const TexturePlace& textures) const
{
    if (!material.surface.doubleSided && isBack(place))
        return {};
    BaseColor base = {material.baseColor, material.surface.opacity};
    const osg::Mesh& mesh = m_scene.placed(place.hit.placed).surface->mesh();
    if (mesh.colors.size() == mesh.positions.size()) {
        const Eigen::Vector4f vertex = vertexColor(mesh, place.hit);
        base.color = material.isGiven ? Eigen::Vector3f(base.color.cwiseProduct(vertex.head<3>())) : vertex.head<3>();
        base.alpha *= vertex[3];
    }
    if (const std::optional<SurfaceTexture>& texture = material.texture(Slot::BaseColor)) {
        if (const std::optional<Eigen::Vector4f> value = textures.read(*texture)) {
            base.color = base.color.cwiseProduct(value->head<3>());
            base.alpha *= (*value)[3];
        }
    }
    base.alpha = coverage(material.surface, base.alpha);
    return base;
}

/// The picture tells of the front; a back has all of it reversed.
Eigen::Vector3f StudioShading::mappedNormal(const StudioPlace& place, const std::optional<SurfaceTexture>& texture,
                                            const TexturePlace& textures) const
{
    const std::optional<Eigen::Vector4f> value = texture ? textures.read(*texture) : std::nullopt;
    if (!value)
        return place.normal;
    const float side = isBack(place) ? -1.0f : 1.0f;
    const Eigen::Vector3f front = place.normal * side;
    const auto axes = textures.axes(*texture, front);
    if (!axes)
        return place.normal;
    const Eigen::Vector3f told = value->head<3>() * 2 - Eigen::Vector3f::Ones();
    const Eigen::Vector3f normal = *axes * (told.head<2>() * texture->strength()) + front * told.z();
    const float length = normal.norm();
    return length > 1e-6f && std::isfinite(length) ? Eigen::Vector3f(normal * (side / length)) : place.normal;
}

StudioShading::Local StudioShading::localOf(const StudioPlace& place, const StudioMaterial& material,
                                            const TexturePlace& textures) const
{
    const osg::PhysicalSurface& surface = material.surface;
    Local local;
    local.normal = mappedNormal(place, material.texture(Slot::Normal), textures);
    local.metalness = surface.metalness * channel(material, Slot::MetallicRoughness, 2, textures);
    local.roughness = surface.roughness * channel(material, Slot::MetallicRoughness, 1, textures);
    local.grazing = surface.specular * channel(material, Slot::Specular, 3, textures);
    local.reflectance =
        dielectricReflectance(surface).cwiseProduct(color(material, Slot::SpecularColor, textures)).cwiseMin(1.0f) *
        local.grazing;
    local.transmission = surface.transmission * channel(material, Slot::Transmission, 0, textures);
    const std::optional<SurfaceTexture>& occlusion = material.texture(Slot::Occlusion);
    const float open = channel(material, Slot::Occlusion, 0, textures);
    local.open = occlusion ? std::clamp(1 + occlusion->strength() * (open - 1), 0.0f, 1.0f) : 1;
    local.coat = surface.clearcoat * channel(material, Slot::Clearcoat, 0, textures);
    local.coatRoughness = surface.clearcoatRoughness * channel(material, Slot::ClearcoatRoughness, 1, textures);
    local.coatNormal =
        local.coat > 0 ? mappedNormal(place, material.texture(Slot::ClearcoatNormal), textures) : place.normal;
    return local;
}

/// What a rough surface reflects comes rather from where it looks than from where a mirror would (Lagarde and de
/// Rousiers 2014).
Eigen::Vector3f StudioShading::radiance(const Eigen::Vector3f& normal, const Eigen::Vector3f& towardsEye,
                                        float roughness) const
{
    const Eigen::Vector3f mirrored = normal * (2 * normal.dot(towardsEye)) - towardsEye;
    const float alpha = roughness * roughness, smoothness = 1 - alpha;
    const float part = smoothness * (std::sqrt(smoothness) + alpha);
    return m_environment.reflected(normal * (1 - part) + mirrored * part, roughness);
}

void StudioShading::addReflection(StudioSight& light, const StudioPlace& place, const Local& local) const
{
    const float facing = facingOf(local.normal, place.towardsEye);
    const DirectionalAlbedo albedo = albedoTable().at(local.roughness, facing);
    const Scattering dielectric = scatteringOf(albedo, local.reflectance, local.grazing);
    const Scattering metal = scatteringOf(albedo, local.base.color, 1);
    const Eigen::Vector3f into =
        local.base.color.cwiseProduct(
            (Eigen::Vector3f::Ones() - dielectric.single - dielectric.multiple).cwiseMax(0.0f)) *
        (1 - local.metalness);
    const Eigen::Vector3f single = dielectric.single * (1 - local.metalness) + metal.single * local.metalness;
    const Eigen::Vector3f multiple = dielectric.multiple * (1 - local.metalness) + metal.multiple * local.metalness;
    const Eigen::Vector3f gathered = m_environment.gathered(local.normal) * local.open;
    light.open = (into * (1 - local.transmission) + multiple).cwiseProduct(gathered) +
                 radiance(local.normal, place.towardsEye, local.roughness).cwiseProduct(single) *
                     reflectionOpenness(facing, local.open, local.roughness);
    Eigen::Vector3f through = into * local.transmission;
    if (local.coat > 0) {
        const float coatFacing = facingOf(local.coatNormal, place.towardsEye);
        const DirectionalAlbedo coat = albedoTable().at(local.coatRoughness, coatFacing);
        const float reflected = local.coat * (coatReflectance * coat.scale + coat.bias);
        light.open = light.open * (1 - reflected) +
                     radiance(local.coatNormal, place.towardsEye, local.coatRoughness) * reflected;
        light.fixed *= 1 - reflected;
        through *= 1 - reflected;
    }
    // What is behind shows through what is not covered, and through what is, tinted.
    const float alpha = local.base.alpha;
    const Eigen::Vector3f behind = Eigen::Vector3f::Constant(1 - alpha) + through * alpha;
    const float most = behind.maxCoeff();
    light.covered = 1 - most;
    if (most > 0)
        light.tint = behind / most;
    if (light.covered > 0) {
        light.open *= alpha / light.covered;
        light.fixed *= alpha / light.covered;
    }
}

StudioSight StudioShading::light(const StudioPlace& place) const
{
    const StudioMaterial& material = m_materials.of(m_scene.placed(place.hit.placed).part);
    const TexturePlace textures = texturePlace(place);
    StudioSight light;
    const BaseColor base = baseColor(place, material, textures);
    if (base.alpha <= 0)
        return light;
    if (material.surface.unlit) {
        light.fixed = base.color;
        light.covered = base.alpha;
        return light;
    }
    light.fixed = material.emission.cwiseProduct(color(material, Slot::Emission, textures));
    Local local = localOf(place, material, textures);
    local.base = base;
    addReflection(light, place, local);
    return light;
}

} // namespace render::studio
