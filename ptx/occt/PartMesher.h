#pragma once

#include "ptx/core/Outcome.h"
#include "ptx/model/Job.h"
#include "ptx/model/Model.h"
#include "ptx/occt/meshing/ShapeBody.h"

#include <vector>

namespace ptx
{

/// What is done with parts whose faces are not joined.
enum class Loose { Keep, Stitch };

/// Heals and meshes `shapes` in parallel, each once, and gives the bodies in the same order. The shapes are given up on
/// the way, so that their memory comes back. A part that the kernel fails on becomes a warning and an empty body.
Outcome<std::vector<Body>> meshParts(std::vector<ShapeBody> shapes, const Job& job, Loose loose = Loose::Keep);

} // namespace ptx
