#pragma once

#include "geometry/rays/RayScene.h"
#include "render/studio/Environment.h"
#include "render/studio/MaterialTable.h"

namespace render::studio
{

class TexturePlace;

/// A place on a surface that is looked at.
struct StudioPlace {
    const geometry::rays::Hit& hit;
    Eigen::Vector3f towardsEye; ///< of length 1
    Eigen::Vector3f normal;     ///< smooth where the mesh has normals; on the eye's side
    Eigen::Vector3f flatNormal; ///< of the triangle, on the eye's side
    float pixelSize = 0;        ///< of the picture, at the place, on the stage
};

/// What a surface is covered with.
struct BaseColor {
    Eigen::Vector3f color = {0, 0, 0};
    float alpha = 0; ///< what counts of it: 1 or 0 where the material does not blend; 0 for what is not seen
};

/// What comes from a place towards the eye.
struct StudioSight {
    Eigen::Vector3f fixed = {0, 0, 0}; ///< that is there in any case
    Eigen::Vector3f open = {0, 0, 0};  ///< as far as the place is open to the environment
    float covered = 0;                 ///< what part of the sight is light of this place, with which both count
    Eigen::Vector3f tint = {1, 1, 1};  ///< of what is seen through it
};

/// Surfaces as the metallic-roughness model has them, in the light of an environment: a dull part, and facets that
/// reflect by Schlick, Smith and GGX; a clear coat above; what is transmitted goes straight on.
class StudioShading
{
public:
    /// All are kept as references.
    StudioShading(const geometry::rays::RayScene& scene, const geometry::rays::PartList& list,
                  const MaterialTable& materials, const Environment& environment)
        : m_scene(scene), m_list(list), m_materials(materials), m_environment(environment)
    {
    }

    /// Of a hit upon a surface.
    BaseColor baseColor(const StudioPlace& place) const;
    StudioSight light(const StudioPlace& place) const;

private:
    /// What the material is at one place.
    struct Local;

    TexturePlace texturePlace(const StudioPlace& place) const;
    BaseColor baseColor(const StudioPlace& place, const StudioMaterial& material, const TexturePlace& textures) const;
    bool isBack(const StudioPlace& place) const;
    Eigen::Vector3f mappedNormal(const StudioPlace& place, const std::optional<SurfaceTexture>& texture,
                                 const TexturePlace& textures) const;
    Eigen::Vector3f radiance(const Eigen::Vector3f& normal, const Eigen::Vector3f& towardsEye, float roughness) const;
    Local localOf(const StudioPlace& place, const StudioMaterial& material, const TexturePlace& textures) const;
    void addReflection(StudioSight& light, const StudioPlace& place, const Local& local) const;

    const geometry::rays::RayScene& m_scene;
    const geometry::rays::PartList& m_list;
    const MaterialTable& m_materials;
    const Environment& m_environment;
};

} // namespace render::studio
