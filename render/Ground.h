#pragma once

#include "render/Camera.h"

#include <optional>

namespace render
{

/// The floor that the model stands on. It is not drawn; only the model's shadow shows it.
class Ground
{
public:
    explicit Ground(const Eigen::AlignedBox3d& stage);

    struct Place {
        Eigen::Vector3f position;
        float depth = 0; ///< how dark the shadow is here where no light comes, from 0 to 1
    };

    /// Where a ray that misses the model meets the floor, if a shadow could be there.
    std::optional<Place> placeOn(const Ray& ray) const;

private:
    float m_height;
    Eigen::AlignedBox2f m_footprint;
};

/// How far away from a place of the floor the model darkens it.
inline constexpr float groundReach = 0.55f;

} // namespace render
