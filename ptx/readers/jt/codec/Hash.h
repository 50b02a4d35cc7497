#pragma once

#include <cstdint>
#include <span>

namespace ptx::jt::codec
{

/// The check sum of arrays, chained by passing the sum so far as `seed`. The length counts: an empty array changes it.
std::uint32_t hash32(std::span<const std::int32_t> values, std::uint32_t seed);
/// The same over the low 16 bits of each value.
std::uint32_t hash16(std::span<const std::int32_t> values, std::uint32_t seed);

} // namespace ptx::jt::codec
