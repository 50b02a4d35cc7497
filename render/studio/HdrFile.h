#pragma once

#include "files/Expected.h"

#include <Eigen/Core>

#include <cstddef>
#include <vector>

namespace render::studio
{

/// A picture of all directions: the upper border is straight up, the lower one straight down, and a row goes once
/// around. In the middle stands what is on the side of +X, a quarter to the right of it -Y.
struct HdrPicture {
    int width = 0, height = 0;           ///< pixels
    std::vector<Eigen::Vector3f> pixels; ///< row by row from the upper left; amounts of light, 0 to `mostLight`

    /// The light from a direction of length 1, between the four pixels around it.
    Eigen::Vector3f at(const Eigen::Vector3f& direction) const;
};

/// What brighter pixels count as: what goes into half precision numbers.
inline constexpr float mostLight = 65504;

/// Reads a Radiance picture (.hdr) of RGBE pixels, of rows from top to bottom, packed or not. More pixels than `most`
/// are refused before there is memory for them.
files::Expected<HdrPicture> readHdrFile(const QString& path, std::size_t most);

} // namespace render::studio
