#pragma once

#include "ptx/readers/jt/shapes/Shape.h"
#include "ptx/readers/jt/shapes/ShapeInput.h"

namespace ptx::jt::shapes
{

/// Versions 9 and 10: polygons whose connectivity is rebuilt from arrays. What is wrong is told by the input's cursor;
/// corners may lead nowhere.
void readTopologicalShape(ShapeInput& input, Shape& shape);

} // namespace ptx::jt::shapes
