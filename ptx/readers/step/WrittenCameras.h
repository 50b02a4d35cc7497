#pragma once

#include "ptx/readers/step/ViewFraming.h"

#include <cstddef>
#include <optional>

class StepVisual_CameraModelD3;

namespace ptx::step
{

/// What `model` writes in units of `millimetres`, its section planes among it; nothing when an entity is not there
/// or the axes are none.
std::optional<WrittenCamera> cameraOf(const StepVisual_CameraModelD3& model, double millimetres);

/// Section planes of `model` that cameraOf() does not give, for they are joined in ways that cannot be told.
std::size_t untoldSections(const StepVisual_CameraModelD3& model);

} // namespace ptx::step
