#pragma once

#include <array>

namespace ptx::jt::codec
{

using Vector = std::array<float, 3>;

/// A display colour (sRGB) with its alpha.
using Colour = std::array<float, 4>;

/// (0, 0) is the lower left corner of the picture.
using TextureCoordinate = std::array<float, 2>;

} // namespace ptx::jt::codec
