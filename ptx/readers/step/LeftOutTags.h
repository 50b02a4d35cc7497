#pragma once

#include "ptx/readers/step/annotations/Drawing.h"

#include <cstddef>
#include <string>
#include <vector>

namespace ptx::step
{

/// The tags that tell whoever imports `file` what is not brought in of its saved views and annotations.
std::vector<std::string> leftOutTags(const std::string& file, std::size_t views, const annotations::Drawing& drawing);

} // namespace ptx::step
