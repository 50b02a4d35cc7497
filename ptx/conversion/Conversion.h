#pragma once

#include "ptx/core/CommandLine.h"
#include "ptx/readers/Reader.h"

namespace ptx::conversion
{

/// Runs the conversion that `line` asks for, by the readers of `formats`, which outlive it: input to scene file, with
/// progress file and log beside it. A limit, a
/// request to stop or a fatal signal ends the process from within.
core::ExitCode convert(const core::CommandLine& line, readers::Formats formats);

} // namespace ptx::conversion
