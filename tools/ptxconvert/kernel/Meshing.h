#pragma once

#include "tools/ptxconvert/kernel/Tolerance.h"

class TopoDS_Shape;

namespace ptx
{

/// Gives every face of `shape` a mesh within `tolerance`, on several threads when `inParallel` says so. A mesh that the
/// shape bears already is dropped. Exceptions of the kernel pass through.
void tessellate(const TopoDS_Shape& shape, const Tolerance& tolerance, bool inParallel);

} // namespace ptx
