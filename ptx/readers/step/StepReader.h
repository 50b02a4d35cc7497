#pragma once

#include "ptx/readers/Reader.h"

namespace ptx::step
{

/// STEP AP203, AP214 and AP242 in the text encoding: structure, names, colours and exact geometry.
const readers::Format& format();

} // namespace ptx::step
