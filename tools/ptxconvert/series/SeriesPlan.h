#pragma once

#include "ptx/core/Outcome.h"

#include <string>
#include <vector>

namespace ptxconvert
{

/// One of several conversions; both paths are absolute.
struct SeriesItem {
    std::string input;
    std::string output;
};

/// What becomes of `inputs` in `folder`: the name without its extension, with ".osb"; behind its own extension where
/// two inputs would meet. A failure where they meet all the same, since they have one name, or where an output would
/// be an input.
ptx::core::Outcome<std::vector<SeriesItem>> planSeries(const std::vector<std::string>& inputs,
                                                       const std::string& folder);

} // namespace ptxconvert
