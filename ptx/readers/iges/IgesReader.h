#pragma once

#include "ptx/readers/Reader.h"

namespace ptx::iges
{

/// IGES: surfaces, solids and curves with names, colours and layers. Loose faces of a part are sewn together.
const readers::Format& format();

} // namespace ptx::iges
