#pragma once

#include "ptx/core/Outcome.h"
#include "ptx/core/Progress.h"
#include "ptx/readers/stl/StlSolid.h"

#include <cstdint>
#include <string_view>

namespace ptx::stl
{

/// The size that the count of triangles in `head` asks for, 0 when `head` is too short to hold one.
std::uint64_t binarySize(std::string_view head);

/// Reads a binary file of one solid. Numbers are little-endian whatever the machine is.
core::Outcome<Solid> readBinary(std::string_view content, core::Progress& progress);

} // namespace ptx::stl
