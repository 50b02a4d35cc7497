#pragma once

#include "ptx/readers/Reader.h"

namespace ptx::stl
{

/// STL, text and binary. Solids of a text stay apart and keep their names.
const readers::Format& format();

} // namespace ptx::stl
