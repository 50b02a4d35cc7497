#pragma once

#include "ptx/readers/Reader.h"

namespace ptx::step::recognition
{

/// What the program knows of STEP files without their reader: the row of the format, with nothing that reads.
const readers::Format& format();

} // namespace ptx::step::recognition
