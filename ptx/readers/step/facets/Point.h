#pragma once

#include <array>

namespace ptx::step::facets
{

/// In the unit of the text.
using Point = std::array<double, 3>;

} // namespace ptx::step::facets
