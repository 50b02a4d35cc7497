#pragma once

#include "ptx/readers/step/p21/Records.h"

#include <cstdint>
#include <functional>
#include <string_view>

namespace ptx::step::p21
{

/// What a type is to whoever looks for some; NotWanted for all others.
using TypeClass = std::function<int(std::string_view type)>;
inline constexpr int NotWanted = -1;

/// Whether a type of `records` is wanted. Looks at the types alone.
bool hasType(const Records& records, const TypeClass& classOf);

/// Calls `found` with class and entity number for each entity, and each member of a complex one, of a wanted type, in
/// the order of the text. `classOf` is asked once for each type of a piece.
void forEachTyped(const Records& records, const TypeClass& classOf,
                  const std::function<void(int, std::uint32_t)>& found);

} // namespace ptx::step::p21
