#pragma once

#include "ptx/core/Settings.h"

class TopoDS_Shape;

namespace ptx::occt::meshing
{

/// How finely one part becomes a mesh.
struct Tolerance {
    double deviation = 0; ///< millimetres between mesh and surface
    double angle = 0;     ///< radians between neighbouring normals
};

/// The tolerance that `settings` ask for, for a part of this shape's size.
Tolerance toleranceFor(const TopoDS_Shape& shape, const core::Settings& settings);

/// The gap between loose faces of this shape that `settings` ask to close, in millimetres.
double stitchTolerance(const TopoDS_Shape& shape, const core::Settings& settings);

} // namespace ptx::occt::meshing
