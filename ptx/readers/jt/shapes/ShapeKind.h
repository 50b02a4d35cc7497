#pragma once

namespace ptx::jt::shapes
{

enum class ShapeKind {
    Strips,
    Polylines,
    Points,
    Polygons,
    Null, ///< draws nothing
};

} // namespace ptx::jt::shapes
