#pragma once

#include "ptx/occt/meshing/ShapeBody.h"

#include <Standard_Handle.hxx>

class ShapeBuild_ReShape;

namespace ptx::occt
{

/// Repairs `body`'s shape: missing curves, wires that do not close, faces turned inside out. The marks stay those of
/// the faces before. Solids that are inside out may stay so, as body.mayBeInsideOut tells then. Curves that are missing
/// are made on several threads when `inParallel` says so. Exceptions of OCCT pass through; the body is as good as it
/// was then.
/// @return what became of the faces, for followMarks; null if the shape is as it was
Handle(ShapeBuild_ReShape) healShape(occt::meshing::ShapeBody& body, bool inParallel);

/// Gives the marks of `body`'s faces to what these became by `changes`.
void followMarks(occt::meshing::ShapeBody& body, ShapeBuild_ReShape& changes);

/// Both.
void heal(occt::meshing::ShapeBody& body, bool inParallel);

} // namespace ptx::occt
