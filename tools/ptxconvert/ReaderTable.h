#pragma once

#include "ptx/readers/Reader.h"

namespace ptx
{

/// The formats of this build, in the order in which they are probed.
Formats formats();

} // namespace ptx
