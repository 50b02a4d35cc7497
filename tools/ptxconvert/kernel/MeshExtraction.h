#pragma once

#include "tools/ptxconvert/kernel/ShapeBody.h"
#include "tools/ptxconvert/kernel/Tolerance.h"
#include "tools/ptxconvert/model/Model.h"

namespace ptx
{

/// What came out of one shape.
struct Extraction {
    Body body;
    std::size_t faces = 0;
    std::size_t emptyFaces = 0; ///< faces that the kernel found no mesh for
    std::size_t triangles = 0;
};

/// Collects the mesh that the shape's faces bear, one piece for each appearance, and the edges that belong to no face
/// as lines. The shape was meshed with `tolerance` before.
Extraction extract(const ShapeBody& body, const Tolerance& tolerance);

} // namespace ptx
