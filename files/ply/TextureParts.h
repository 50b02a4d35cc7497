#pragma once

#include "scene/MeshArrays.h"

#include <cstdint>
#include <vector>

namespace files::ply
{

/// What of a mesh bears one picture.
struct TexturePart {
    std::int32_t texture = -1; ///< the number of the picture; -1 for none
    osg::MeshArrays arrays;
};

/// Parts of the triangles that bear one picture each, by its number, with the vertices that they use. Lines go with the
/// first part.
/// @param textureOfTriangle a number for each triangle
std::vector<TexturePart> partsOf(const osg::MeshArrays& arrays, const std::vector<std::int32_t>& textureOfTriangle);

} // namespace files::ply
