#pragma once

#include "ptx/occt/PartWork.h"
#include "ptx/occt/meshing/FaceMesh.h"
#include "ptx/occt/meshing/ShapeBody.h"
#include "ptx/occt/meshing/Tolerance.h"

namespace ptx::occt
{

/// What pieces get beside triangles and normals.
struct PieceWishes {
    bool keepBrep = false; ///< the exact surface of their faces, in the order of their face ranges
    occt::meshing::Coordinates coordinates = occt::meshing::Coordinates::None;
};

/// Collects the mesh that the shape's faces bear, one piece for each mark, and the edges that belong to no face
/// as lines. The shape was meshed with `tolerance` before. A piece with a face that has no parameters has no texture
/// coordinates.
PartResult extract(const occt::meshing::ShapeBody& body, const occt::meshing::Tolerance& tolerance,
                   const PieceWishes& wishes);

} // namespace ptx::occt
