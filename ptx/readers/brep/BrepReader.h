#pragma once

#include "ptx/readers/Reader.h"

namespace ptx::brep
{

/// OCCT's own files, text and binary: one shape without names and colours.
const readers::Format& format();

} // namespace ptx::brep
