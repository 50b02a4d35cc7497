#pragma once

#include <array>

namespace ptx::jt::graph
{

/// Acts on row vectors and is stored row by row, the translation in the elements 12 to 14.
using Placement = std::array<double, 16>;

inline constexpr Placement NoMove = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};

/// What `inner` does, and then `outer`.
Placement combined(const Placement& inner, const Placement& outer);

} // namespace ptx::jt::graph
