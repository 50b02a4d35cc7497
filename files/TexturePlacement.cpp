#include "files/TexturePlacement.h"

#include <cmath>

namespace files
{

namespace
{

/// Of the length of the second column, that of its part along the first one.
constexpr double allowedShear = 1e-4;

} // namespace

/// With v turned over before and after, the placement is the matrix ((uu, -uv), (-vu, vv)) and the offset
/// (u0 + uv, 1 - v0 - vv). A texture has ((c sx, s sy), (-s sx, c sy)), c and s being of its rotation.
bool place(osg::Texture& texture, const UpwardPlacement& placement)
{
    const auto& [uu, uv, u0, vu, vv, v0] = placement;
    texture.offset = {float(u0 + uv), float(1 - v0 - vv)};
    if (uv == 0 && vu == 0) {
        texture.scale = {float(uu), float(vv)};
        texture.rotation = 0;
        return true;
    }
    const double rotation = std::atan2(vu, uu);
    const double cosine = std::cos(rotation), sine = std::sin(rotation);
    texture.rotation = float(rotation);
    texture.scale = {float(std::hypot(uu, vu)), float(cosine * vv - sine * uv)};
    return std::abs(cosine * uv + sine * vv) <= allowedShear * std::hypot(uv, vv);
}

} // namespace files
