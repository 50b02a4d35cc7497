#pragma once

#include "ptx/core/CommandLine.h"
#include "ptx/core/Outcome.h"
#include "ptx/core/Settings.h"

#include <string>
#include <vector>

namespace ptx::tessellation
{

/// What the command line of ptxtessellate asks for.
struct TessellationOptions {
    std::string input;
    std::string output;
    double deviation = 0.1;     ///< mm between mesh and surface, more than 0
    double angle = 15;          ///< degrees between neighbouring normals, more than 0
    double longestEdge = 0;     ///< mm; 0: any
    double stitchTolerance = 0; ///< mm; 0: no stitching
    core::Settings settings;    ///< of them threads and limits count
    core::Sandbox sandbox = core::Sandbox::On;
};

std::string tessellationUsage();

/// Numbers are read in the C locale. A failure says which argument is wrong.
core::Outcome<TessellationOptions> parseTessellationOptions(const std::vector<std::string>& arguments);

} // namespace ptx::tessellation
