#pragma once

#include "host/znKernelServices/znReferenceService.h"

#include <memory>

namespace zn
{

/// Makes reference nodes in the scene of the living session.
std::unique_ptr<znReferenceService> makeReferenceService();

} // namespace zn
