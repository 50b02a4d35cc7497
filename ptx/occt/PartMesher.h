#pragma once

#include "ptx/core/Outcome.h"
#include "ptx/model/Job.h"
#include "ptx/model/Model.h"
#include "ptx/occt/meshing/ShapeBody.h"

#include <vector>

namespace ptx::occt
{

class HealingAhead;

/// What is done with parts whose faces are not joined.
enum class Loose { Keep, Stitch };

/// Heals and meshes `shapes` in parallel, each once, and gives the bodies in the same order. The shapes are given up on
/// the way, so that their memory comes back. A part that OCCT fails on becomes a warning and an empty body;
/// one that it crashed on in an attempt before is an empty body.
/// What `ahead` has healed is taken from there; it may be null.
core::Outcome<std::vector<model::Body>> meshParts(std::vector<occt::meshing::ShapeBody> shapes, const model::Job& job,
                                                  Loose loose = Loose::Keep, HealingAhead* ahead = nullptr);

} // namespace ptx::occt
