#pragma once

#include "scene/Buffer.h"

#include <cstdint>

namespace files::gltf
{

/// The corners of an element of a primitive's mode: 1 for points, 2 for the modes of lines, 3 for those of triangles, 0
/// for what is no mode.
std::size_t gltfCorners(int mode);

/// The single points, lines or triangles of a primitive of this mode, with their front sides where they were. Vertices
/// at the end that make no whole element are left out.
osg::Buffer<std::uint32_t> gltfElements(int mode, const osg::Buffer<std::uint32_t>& indices);

} // namespace files::gltf
