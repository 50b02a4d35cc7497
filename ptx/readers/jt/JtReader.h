#pragma once

#include "ptx/readers/Reader.h"

namespace ptx::jt
{

/// JT of the versions 8 to 10: structure and the meshes that the file holds. Its exact surfaces are not read.
const readers::Format& format();

} // namespace ptx::jt
