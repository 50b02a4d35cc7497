#pragma once

#include "ptx/core/Outcome.h"

#include <string>

namespace ptx::readers
{

/// The whole file in memory.
core::Outcome<std::string> readContent(const std::string& path);

} // namespace ptx::readers
