#pragma once

#include "host/znKernelServices/znCameraService.h"

#include <memory>

namespace zn::services
{

/// Makes cameras in the camera tree of the living session.
std::unique_ptr<znCameraService> makeCameraService();

} // namespace zn::services
