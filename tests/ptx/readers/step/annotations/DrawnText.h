#pragma once

#include "ptx/readers/step/annotations/Drawing.h"

#include <string>
#include <string_view>

namespace ptxtest
{

/// What the annotations of a whole file draw.
ptx::step::annotations::Drawing drawn(std::string_view file);
/// The same of the data section alone.
ptx::step::annotations::Drawing drawnOf(const std::string& data);

} // namespace ptxtest
