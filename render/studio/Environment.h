#pragma once

#include "render/studio/RadianceMap.h"

#include <atomic>
#include <vector>

namespace render::studio
{

/// The light around a scene, ready to be reflected: by mirrors, by rough surfaces and by dull ones.
class Environment
{
public:
    /// @param detail how many values the light has once around
    /// @param cancel ends the work early, with a useless environment; may be null
    Environment(const RadianceFunction& light, int detail, int threads, const std::atomic<bool>* cancel);

    /// The light around `direction`, as a surface of this roughness (0 to 1) sees it that looks there: the mean with
    /// the weights of the GGX distribution.
    Eigen::Vector3f reflected(const Eigen::Vector3f& direction, float roughness) const;
    /// The mean over the half-sphere around `normal`, with the weights of the cosine: what a white dull surface shows.
    Eigen::Vector3f gathered(const Eigen::Vector3f& normal) const { return m_gathered.at(normal); }

private:
    std::vector<RadianceMap> m_levels; ///< of roughnesses from 0 to 1 in equal steps
    RadianceMap m_gathered;
};

} // namespace render::studio
