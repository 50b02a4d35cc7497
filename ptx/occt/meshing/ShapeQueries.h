#pragma once

#include <cstddef>

class TopoDS_Shape;

namespace ptx::occt::meshing
{

/// Whether `shape` has a face or an edge.
bool hasGeometry(const TopoDS_Shape& shape);

std::size_t faceCount(const TopoDS_Shape& shape);

/// Edges of `shape` that end at one face alone.
std::size_t freeEdgeCount(const TopoDS_Shape& shape);

} // namespace ptx::occt::meshing
