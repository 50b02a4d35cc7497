#pragma once

#include "ptx/readers/jt/shapes/Shape.h"
#include "ptx/readers/jt/shapes/ShapeInput.h"

namespace ptx::jt::shapes
{

/// What the two kinds of shapes of the versions 9 and 10 begin with.
void skipShapeHead(ShapeInput& input);

/// The arrays of vertices of the versions 9 and 10 that `bindings` names, with their check sums. What is wrong is told
/// by the input's cursor.
void readVertexArrays(ShapeInput& input, std::uint64_t bindings, Shape& shape);

} // namespace ptx::jt::shapes
