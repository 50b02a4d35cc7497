#pragma once

#include <cstddef>
#include <string_view>

namespace files::ply
{

/// What a vertex can carry.
enum Slot : std::size_t { X, Y, Z, NormalX, NormalY, NormalZ, Red, Green, Blue, Alpha, U, V, SlotCount };

/// Where the values of a property of vertices go; `SlotCount` for one that is not read.
Slot slotOf(std::string_view property);

} // namespace files::ply
