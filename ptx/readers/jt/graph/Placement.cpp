#include "ptx/readers/jt/graph/Placement.h"

namespace ptx::jt::graph
{

Placement combined(const Placement& inner, const Placement& outer)
{
    Placement result{};
    for (std::size_t row = 0; row < 4; ++row)
        for (std::size_t column = 0; column < 4; ++column)
            for (std::size_t k = 0; k < 4; ++k)
                result[4 * row + column] += inner[4 * row + k] * outer[4 * k + column];
    return result;
}

} // namespace ptx::jt::graph
