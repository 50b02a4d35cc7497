#pragma once

#include "tools/ptxconvert/readers/jt/shapes/Shape.h"
#include "tools/ptxconvert/readers/jt/shapes/ShapeInput.h"

/// Readers of the kinds of shapes. What is wrong is told by the input's cursor; corners may lead nowhere.
namespace ptx::jt
{

enum class ShapeKind {
    Strips,
    Polylines,
    Points,
    Polygons,
    Null, ///< draws nothing
};

/// The bits of such words are shared out in a way that is not known.
inline constexpr const char* PackedColours = "colours of its vertices, which are packed into single words";

/// Version 8: lists of vertices, which lie there plainly or as quantised arrays.
void readVertexLists(ShapeInput& input, ShapeKind kind, Shape& shape);

/// Versions 9 and 10: polygons whose connectivity is rebuilt from arrays.
void readTopologicalShape(ShapeInput& input, Shape& shape);

/// Versions 9 and 10: polylines and points as lists of indices.
void readIndexLists(ShapeInput& input, ShapeKind kind, Shape& shape);

/// What the two kinds of the versions 9 and 10 begin with.
void skipHead(ShapeInput& input);

/// The arrays of vertices of the versions 9 and 10 that `bindings` names, with their check sums.
void readVertexArrays(ShapeInput& input, std::uint64_t bindings, Shape& shape);

} // namespace ptx::jt
