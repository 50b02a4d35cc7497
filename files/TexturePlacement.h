#pragma once

#include "host/OSGSystem/PhysicalSurface.h"

namespace files
{

/// What formats whose v runs up from the lower border do to texture coordinates before they look up a picture: (u, v)
/// becomes (uu u + uv v + u0, vu u + vv v + v0).
struct UpwardPlacement {
    double uu = 1, uv = 0, u0 = 0;
    double vu = 0, vv = 1, v0 = 0;
};

/// Lets `texture` lie where `placement` says. False when that shears the picture, which a texture cannot: it lies
/// then as near to it as scale, rotation and offset bring it.
bool place(osg::Texture& texture, const UpwardPlacement& placement);

} // namespace files
