#pragma once

#include "ptx/occt/PartWork.h"
#include "ptx/occt/meshing/ShapeBody.h"
#include "ptx/occt/meshing/Tolerance.h"

namespace ptx::occt
{

/// Collects the mesh that the shape's faces bear, one piece for each mark, and the edges that belong to no face
/// as lines. The shape was meshed with `tolerance` before. With `keepBrep` each piece gets the exact surface of its
/// faces, in the order of its face ranges.
PartResult extract(const occt::meshing::ShapeBody& body, const occt::meshing::Tolerance& tolerance, bool keepBrep);

} // namespace ptx::occt
