#pragma once

#include "tools/ptxconvert/core/Outcome.h"

#include <string>

namespace ptx
{

/// The whole file in memory.
Outcome<std::string> readContent(const std::string& path);

} // namespace ptx
