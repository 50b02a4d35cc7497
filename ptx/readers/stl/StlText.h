#pragma once

#include "ptx/core/Outcome.h"
#include "ptx/core/Progress.h"
#include "ptx/readers/stl/StlSolid.h"

#include <string_view>
#include <vector>

namespace ptx::stl
{

/// Reads the text form: any number of solids, keywords in any case, numbers in the C locale. An error names its line.
/// A file that ends within a solid keeps the facets that are complete; `isCutOff` tells.
struct TextResult {
    std::vector<Solid> solids;
    bool isCutOff = false;
};
core::Outcome<TextResult> readText(std::string_view content, core::Progress& progress);

} // namespace ptx::stl
