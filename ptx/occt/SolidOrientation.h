#pragma once

#include "ptx/occt/meshing/ShapeBody.h"

class ShapeFix_Shape;

namespace ptx::occt
{

/// Lets `fixer` heal `body`'s shape without finding out which solids are inside out, where the mesh can tell it later,
/// and says so in `body.mayBeInsideOut`. Only solids of one closed shell are put off; OCCT finishes the others.
///
/// OCCT asks by a ray that it sends through polyhedra of all faces of the solid, which takes a fifth of the
/// healing.
/// @return the healed shape, null if there is none
TopoDS_Shape healUnoriented(ShapeFix_Shape& fixer, occt::meshing::ShapeBody& body);

/// Turns the solids of a meshed `body` that were put off and are inside out. The sign of the volume within a solid's
/// mesh tells it. Where that is too small against `deviation` (mm, between mesh and surfaces) to be sure of, or where
/// faces have no mesh, a ray tells it.
void orientByMesh(occt::meshing::ShapeBody& body, double deviation);

/// The same for a body without a mesh: rays tell it.
void orientByRay(occt::meshing::ShapeBody& body);

} // namespace ptx::occt
