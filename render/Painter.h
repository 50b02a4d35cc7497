#pragma once

#include "geometry/rays/Sky.h"
#include "render/Ground.h"
#include "render/Shading.h"

namespace render
{

/// The first thing on a ray, for what is drawn by comparison with its neighbours.
struct FirstHit {
    static constexpr std::uint32_t Nothing = 0xFFFFFFFF;
    static constexpr std::uint32_t Stroke = 0xFFFFFFFE;

    Eigen::Vector3f position = {0, 0, 0};
    Eigen::Vector3f normal = {0, 0, 0};
    Eigen::Vector3f color = {0, 0, 0};
    std::uint32_t placed = Nothing;
    std::uint32_t face = 0;
    bool isOpaque = true;
};

/// What one ray sees.
struct Sight {
    Light light;
    float openness = 0; ///< sum over all layers, each with its weight
    float weight = 0;   ///< of the layers with an openness
    /// A place with an openness, for comparison with neighbours: the nearest surface or the ground.
    Eigen::Vector3f position = {0, 0, 0};
    Eigen::Vector3f normal = {0, 0, 0};
};

/// Follows rays through clear things to what is behind them.
class Painter
{
public:
    /// `ground` is null when there is none.
    Painter(const RayScene& scene, const Camera& camera, const Sky& sky, const Ground* ground, float backdropLuminance)
        : m_scene(scene), m_lamps(camera), m_sky(sky), m_ground(ground), m_backdropLuminance(backdropLuminance)
    {
    }

    FirstHit describe(const Ray& ray, const std::optional<Hit>& hit) const;

    /// `first` is what the scene says of `ray`, and `backdrop` the light of the background behind it.
    Sight see(const Ray& ray, const std::optional<Hit>& first, const Eigen::Vector3f& backdrop,
              const SkyRays& skyRays) const;

private:
    void addLayer(Sight& sight, const SeenPoint& point, const Ray& ray, float weight, const SkyRays& skyRays) const;
    void addBackdrop(Sight& sight, const Ray& ray, const Eigen::Vector3f& backdrop, float weight,
                     const SkyRays& skyRays) const;
    Eigen::Vector3f strokeLight(const Eigen::Vector3f& color) const;

    const RayScene& m_scene;
    Lamps m_lamps;
    const Sky& m_sky;
    const Ground* m_ground;
    float m_backdropLuminance;
};

} // namespace render
