#pragma once

#include "ptx/core/Outcome.h"

#include <cstdint>
#include <string>

namespace ptx::conversion
{

/// What is known of the input before it is read.
struct InputFile {
    std::uint64_t size = 0;
    std::string head; ///< the first 64 kB
};

/// Looks at `path`; a folder, an empty file or one without permission cannot be an input.
core::Outcome<InputFile> lookAtInput(const std::string& path);

} // namespace ptx::conversion
