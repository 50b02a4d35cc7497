#pragma once

#include "ptx/readers/step/ViewFraming.h"

#include <optional>

class StepVisual_CameraModelD3;

namespace ptx::step
{

/// What `model` writes in units of `millimetres`; nothing when an entity of it is not there or its axes are none.
std::optional<WrittenCamera> cameraOf(const StepVisual_CameraModelD3& model, double millimetres);

} // namespace ptx::step
