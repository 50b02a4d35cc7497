#pragma once

#include "ptx/core/CommandLine.h"
#include "ptx/readers/Reader.h"

#include <string>

namespace ptx::conversion
{

/// Locks the process into what the conversion of `line` needs: where its files lie, those that the input names as its
/// parts, and those that these name, as far as they may be read. They are found by looks of the formats alone, without
/// what reads the files. @return what to tell in the log; a failure where the
/// conversion may not begin
core::Outcome<std::string> lockIn(const core::CommandLine& line, readers::Formats formats);

} // namespace ptx::conversion
