#pragma once

#include <Eigen/Core>

namespace render::studio
{

/// The light of a studio without colours from a direction of length 1: grey walls, a large soft box above, a bright one
/// on the front's left, a long narrow one on its right, a weak one behind. Z is up, and -Y the front.
Eigen::Vector3f studioLight(const Eigen::Vector3f& direction);

} // namespace render::studio
