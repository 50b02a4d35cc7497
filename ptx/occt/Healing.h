#pragma once

#include "ptx/occt/meshing/ShapeBody.h"

namespace ptx::occt
{

/// Repairs `body`'s shape: missing curves, wires that do not close, faces turned inside out. The marks follow the
/// faces. Solids that are inside out may stay so, as body.mayBeInsideOut tells then. Curves that are missing are made
/// on several threads when `inParallel` says so. Exceptions of OCCT pass through; the body is as good as it was
/// then.
void heal(occt::meshing::ShapeBody& body, bool inParallel);

} // namespace ptx::occt
