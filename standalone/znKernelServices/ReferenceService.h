#pragma once

#include "host/znKernelServices/znReferenceService.h"

#include <memory>

namespace zn::services
{

/// Makes reference nodes in the scene of the living session.
std::unique_ptr<znReferenceService> makeReferenceService();

} // namespace zn::services
