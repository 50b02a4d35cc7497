#pragma once

#include "ptx/model/MeshBuilder.h"
#include "ptx/readers/jt/graph/Placement.h"
#include "ptx/readers/jt/shapes/Shape.h"

namespace ptx::jt::shapes
{

/// Adds what `shape` draws at its place, all lengths times `unit`; the triangles of one surface become one face.
/// Whatever has a position that is not finite is left out.
/// @return how many triangles were added
std::size_t addShape(model::MeshBuilder& mesh, const Shape& shape, const graph::Placement& placement, double unit);

} // namespace ptx::jt::shapes
