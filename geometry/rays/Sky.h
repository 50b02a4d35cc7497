#pragma once

#include "geometry/rays/RayScene.h"

#include <array>
#include <vector>

namespace geometry::rays
{

/// A few of the rays of one pixel into the sky.
struct SkyRays {
    int pixel = 0; ///< place of the pixel in the pattern, 0 to Sky::patternSide^2 - 1
    int first = 0; ///< which of the pixel's rays; they are reused from the start when it has no more
    int count = 0; ///< 0 finds everything open
};

/// Measures how open a place is to the sky, with a few rays.
///
/// The rays of a pixel and those of its neighbours within a square of `patternSide` pixels are all different and
/// together cover the half-sphere evenly; the pattern repeats from square to square. So a mean over such a square has
/// no noise, and a picture no randomness.
class Sky
{
public:
    static constexpr int patternSide = 5;

    Sky(const RayScene& scene, int raysPerPixel);

    int raysPerPixel() const { return m_raysPerPixel; }

    /// From 0 (closed in) to 1 for what is within `reach`; nearer things count more.
    float openness(const Eigen::Vector3f& position, const Eigen::Vector3f& normal, float reach,
                   const SkyRays& rays) const;

private:
    /// A direction about the z axis, and the part of the reach that it is followed.
    struct Probe {
        Eigen::Vector3f direction;
        float reach = 0;
    };

    const RayScene& m_scene;
    int m_raysPerPixel;
    std::vector<Probe> m_probes; ///< the first ray of all pixels of the pattern, then the second ...
};

/// How far away from a place of the model other parts darken it.
inline constexpr float skyReach = 0.5f;
/// Rays start this far above a surface, so that they do not meet it.
inline constexpr float rayLift = 2e-4f;

} // namespace geometry::rays
