#pragma once

#include "ptx/tessellation/Options.h"

namespace ptx::tessellation
{

/// Meshes all geometries of the input into the output. A part that fails by itself does not fail the run; a limit, a
/// request to stop or a fatal signal ends the process from within.
core::ExitCode tessellateFile(const TessellationOptions& options);

} // namespace ptx::tessellation
