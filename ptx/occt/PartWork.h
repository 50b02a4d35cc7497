#pragma once

#include "ptx/model/Job.h"
#include "ptx/model/Model.h"
#include "ptx/occt/meshing/ShapeBody.h"

#include <cstddef>

namespace ptx::occt
{

class HealingAhead;

/// What came out of one part.
struct PartResult {
    model::Body body;
    std::size_t faces = 0;
    std::size_t emptyFaces = 0;             ///< faces that OCCT found no mesh for
    std::size_t facesWithoutParameters = 0; ///< of those with a mesh, when texture coordinates of surfaces are wanted
    std::size_t triangles = 0;
};

/// What one part may use.
struct PartBudget {
    bool inParallel = false;  ///< more than one thread
    double mostTriangles = 0; ///< 0: no limit
};

/// Repairs `part` if the settings ask for it, on several threads if `inParallel`, unless `ahead` (which may be null)
/// has done so. What OCCT fails on becomes a warning.
void healPart(occt::meshing::ShapeBody& part, const model::Job& job, bool inParallel, HealingAhead* ahead);

/// Sews the faces of `part` if it has free edges, for `seconds` at most (0: no limit).
void stitchPart(occt::meshing::ShapeBody& part, const model::Job& job, double seconds);

/// Makes the mesh of `part` as the settings ask for it, and turns its solids that the healing left inside out. What
/// OCCT fails on becomes a warning and an empty body.
PartResult meshPart(occt::meshing::ShapeBody& part, const model::Job& job, const PartBudget& budget);

} // namespace ptx::occt
