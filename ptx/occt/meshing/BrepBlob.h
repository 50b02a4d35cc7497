#pragma once

#include "scene/Buffer.h"

#include <cstddef>

class TopoDS_Shape;

namespace ptx::occt::meshing
{

/// The exact surfaces of `shape` as OCCT stores them, without meshes.
osg::Buffer<std::byte> brepBlob(const TopoDS_Shape& shape);

} // namespace ptx::occt::meshing
