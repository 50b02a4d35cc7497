#pragma once

#include "ptx/core/Outcome.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>

/// Files that hold another one, by gzip (RFC 1952) or as the only STEP file within a ZIP file.
namespace ptx::readers::packed
{

/// Whether a file that begins with `head` is packed, whatever its name says.
bool isPacked(std::string_view head);

/// The first `most` bytes of what the packed file `path` holds. All of it is checked against its checksum. A failure
/// says what is wrong with the file, or which files a ZIP file holds in place of one.
core::Outcome<std::string> content(const std::string& path, std::size_t most = std::numeric_limits<std::size_t>::max());

/// How long the file `path` is, or what it holds if it is packed: by what it says, and never more than its bytes can
/// become. 0 if that cannot be told.
std::uint64_t sizeOf(const std::string& path);

} // namespace ptx::readers::packed
