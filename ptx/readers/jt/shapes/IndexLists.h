#pragma once

#include "ptx/readers/jt/shapes/Shape.h"
#include "ptx/readers/jt/shapes/ShapeInput.h"
#include "ptx/readers/jt/shapes/ShapeKind.h"

namespace ptx::jt::shapes
{

/// Versions 9 and 10: polylines and points as lists of indices. What is wrong is told by the input's cursor; corners
/// may lead nowhere.
void readIndexLists(ShapeInput& input, ShapeKind kind, Shape& shape);

} // namespace ptx::jt::shapes
