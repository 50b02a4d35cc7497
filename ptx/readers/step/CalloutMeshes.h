#pragma once

#include "ptx/model/Model.h"
#include "ptx/readers/step/annotations/Drawing.h"

namespace ptx::step
{

/// `drawn` with meshes, of which each has lines or triangles alone, and its kinds and texts as attributes. Its points
/// have `millimetres` as their unit; lines and triangles with points out of all range are left out. Its appearances
/// join `appearances`.
model::Callout calloutWithMeshes(const annotations::Callout& drawn, double millimetres,
                                 model::AppearanceTable& appearances);

} // namespace ptx::step
