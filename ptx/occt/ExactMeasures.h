#pragma once

#include "ptx/model/Model.h"

class TopoDS_Shape;

namespace ptx::occt
{

/// The area of all faces of `shape` and the volume of its solids, by their exact surfaces. The shape should be healed:
/// faces without sound boundaries measure anything.
model::ExactMeasures exactMeasures(const TopoDS_Shape& shape);

} // namespace ptx::occt
