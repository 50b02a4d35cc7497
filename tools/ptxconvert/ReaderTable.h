#pragma once

#include "ptx/readers/Reader.h"

namespace ptxconvert
{

/// The formats of this build, in the order in which they are probed.
ptx::readers::Formats formats();

} // namespace ptxconvert
