#pragma once

#include "ptx/model/Job.h"
#include "ptx/model/Model.h"
#include "ptx/occt/meshing/ShapeBody.h"

#include <vector>

namespace ptx::occt
{

/// Gives the products of `model` what their shapes measure, by their exact surfaces, as tags: the area of all faces, and
/// the volume where there are solids. Does nothing unless the settings of `job` ask for it. `shapes` are in the order of
/// the bodies. A shape that OCCT cannot measure becomes a warning.
void addExactMeasures(const std::vector<meshing::ShapeBody>& shapes, const model::Job& job, model::Model& model);

} // namespace ptx::occt
