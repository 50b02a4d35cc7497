#pragma once

#include "ptx/occt/meshing/Tolerance.h"

#include <cstddef>

class TopoDS_Shape;

namespace ptx::occt::meshing
{

/// Gives every face of `shape` a mesh within `tolerance`, on several threads when `inParallel` says so. A mesh that the
/// shape bears already is dropped. Exceptions of OCCT pass through.
void tessellate(const TopoDS_Shape& shape, const Tolerance& tolerance, bool inParallel);

/// Triangles that the faces of `shape` bear.
std::size_t triangleCount(const TopoDS_Shape& shape);

} // namespace ptx::occt::meshing
