#pragma once

#include "ptx/core/Outcome.h"

#include <string>

namespace ptx
{

/// The whole file in memory.
Outcome<std::string> readContent(const std::string& path);

} // namespace ptx
