#pragma once

#include "ptx/readers/Reader.h"

namespace ptx::iges::recognition
{

/// What the program knows of IGES files without their reader: the row of the format, with nothing that reads.
const readers::Format& format();

} // namespace ptx::iges::recognition
