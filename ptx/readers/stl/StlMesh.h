#pragma once

#include "ptx/readers/stl/StlSolid.h"
#include "scene/Mesh.h"

#include <memory>

namespace ptx::stl
{

/// The mesh of `solid`, its lengths times `unit`. Corners with the same place and normal become one vertex; a triangle
/// without area keeps its place in the mesh and takes the normal that the file gives.
std::shared_ptr<const osg::Mesh> meshOf(const Solid& solid, float unit);

} // namespace ptx::stl
