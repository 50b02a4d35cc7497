#pragma once

#include "tools/ptxconvert/model/MeshBuilder.h"
#include "tools/ptxconvert/readers/jt/SceneGraph.h"
#include "tools/ptxconvert/readers/jt/Shape.h"

namespace ptx::jt
{

/// Adds the triangles of `shape` at their place, all lengths times `unit`; the triangles of one surface become one face.
/// Triangles whose positions are not finite are left out.
/// @return how many were added
std::size_t addShape(MeshBuilder& mesh, const Shape& shape, const Placement& placement, double unit);

} // namespace ptx::jt
