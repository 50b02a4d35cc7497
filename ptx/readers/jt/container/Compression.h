#pragma once

#include "ptx/readers/jt/container/Cursor.h"

#include <cstdint>
#include <vector>

namespace ptx::jt::container
{

// `damage`, which names `offset`, tells why a result is empty.

/// A zlib stream in full.
std::vector<std::uint8_t> inflateZlib(Bytes packed, std::size_t offset, Damage& damage);
/// An xz stream in full.
std::vector<std::uint8_t> inflateXz(Bytes packed, std::size_t offset, Damage& damage);

} // namespace ptx::jt::container
