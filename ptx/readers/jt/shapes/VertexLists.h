#pragma once

#include "ptx/readers/jt/shapes/Shape.h"
#include "ptx/readers/jt/shapes/ShapeInput.h"
#include "ptx/readers/jt/shapes/ShapeKind.h"

namespace ptx::jt::shapes
{

/// Version 8: lists of vertices, which lie there plainly or as quantised arrays. What is wrong is told by the input's
/// cursor; corners may lead nowhere.
void readVertexLists(ShapeInput& input, ShapeKind kind, Shape& shape);

} // namespace ptx::jt::shapes
