#pragma once

#include <Eigen/Core>

#include <vector>

namespace render::studio
{

/// What part of even light a rough surface reflects at its outside: F0 * `scale` + F90 * `bias`, where F0 and F90 are
/// the reflectances at right angles and at grazing ones (Schlick), with the GGX distribution and Smith's shadowing of
/// correlated heights.
struct DirectionalAlbedo {
    float scale = 0, bias = 0;
};

/// Of all roughnesses and slants, integrated once.
class AlbedoTable
{
public:
    AlbedoTable();

    /// Roughness and the cosine between the normal and the eye, both from 0 to 1.
    DirectionalAlbedo at(float roughness, float facing) const;

private:
    static constexpr int side = 48;

    std::vector<DirectionalAlbedo> m_values; ///< row by row of a roughness
};

/// The table that all pictures share, made at its first use.
const AlbedoTable& albedoTable();

/// What part of even light is reflected at once, and after it went from facet to facet (Fdez-Agüera 2019): together all
/// of it where F0 and F90 are 1.
struct Scattering {
    Eigen::Vector3f single, multiple;
};

Scattering scatteringOf(const DirectionalAlbedo& albedo, const Eigen::Vector3f& f0, float f90);

} // namespace render::studio
