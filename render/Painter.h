#pragma once

#include "geometry/rays/Sky.h"
#include "render/Ground.h"
#include "render/Shading.h"
#include "render/studio/StudioShading.h"

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
    /// How much of the background counts: in any case, and as far as the place is open.
    float clear = 0, clearAmbient = 0;
    /// A place with an openness, for comparison with neighbours: the nearest surface or the ground.
    Eigen::Vector3f position = {0, 0, 0};
    Eigen::Vector3f normal = {0, 0, 0};
};

/// What the light of a place depends on beside the scene.
struct PictureFacts {
    int height = 1;              ///< pixels
    float backdropLuminance = 1; ///< in the middle of the background
};

/// Follows rays through clear things to what is behind them.
class Painter
{
public:
    /// `ground` is null when there is none, `studio` where surfaces have the plain look.
    Painter(const RayScene& scene, const Camera& camera, const Sky& sky, const Ground* ground,
            const studio::StudioShading* studio, const PictureFacts& picture)
        : m_scene(scene), m_camera(camera), m_lamps(camera), m_sky(sky), m_ground(ground), m_studio(studio),
          m_picture(picture)
    {
    }

    FirstHit describe(const Ray& ray, const std::optional<Hit>& hit) const;

    /// `first` is what the scene says of `ray`, and `backdrop` the light of the background behind it.
    Sight see(const Ray& ray, const std::optional<Hit>& first, const Eigen::Vector3f& backdrop,
              const SkyRays& skyRays) const;

private:
    /// A surface or a stroke that a ray meets on its way.
    struct Layer {
        SeenPoint point;
        float covered = 0; ///< what part of the sight it takes
        Light light;       ///< that it sends then; nothing for a stroke
        Eigen::Vector3f tint = {1, 1, 1};
    };

    bool isStudio(const SeenPoint& point) const { return m_studio && !point.isStroke; }
    studio::StudioPlace studioPlace(const SeenPoint& point, const Hit& hit, const Ray& ray) const;
    Layer layerAt(const Hit& hit, const Ray& ray) const;
    void addLayer(Sight& sight, const Layer& layer, float weight, const SkyRays& skyRays) const;
    void addBackdrop(Sight& sight, const Ray& ray, const Eigen::Vector3f& backdrop, float weight,
                     const SkyRays& skyRays) const;
    Eigen::Vector3f strokeLight(const Eigen::Vector3f& color) const;

    const RayScene& m_scene;
    const Camera& m_camera;
    Lamps m_lamps;
    const Sky& m_sky;
    const Ground* m_ground;
    const studio::StudioShading* m_studio;
    PictureFacts m_picture;
};

} // namespace render
