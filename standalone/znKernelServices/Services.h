#pragma once

#include "host/znKernelServices/znCameraService.h"
#include "host/znKernelServices/znReferenceService.h"

#include <memory>

namespace zn
{

/// Makes reference nodes in the scene of the living session.
std::unique_ptr<znReferenceService> makeReferenceService();
/// Makes cameras in the camera tree of the living session.
std::unique_ptr<znCameraService> makeCameraService();

} // namespace zn
