#pragma once

#include <cstddef>
#include <random>
#include <string>
#include <string_view>

namespace ptxtest
{

using Random = std::mt19937;

inline std::size_t pick(Random& random, std::size_t count)
{
    return std::uniform_int_distribution<std::size_t>(0, count - 1)(random);
}

/// Cuts, doubles or exchanges a few places of a STEP text.
inline void mutate(Random& random, std::string& text)
{
    constexpr std::string_view Letters = "#=();,'*/.$\n AE1\"&";
    for (std::size_t count = 1 + pick(random, 8); count > 0; --count) {
        const std::size_t at = pick(random, text.size());
        switch (pick(random, 3)) {
        case 0:
            text[at] = Letters[pick(random, Letters.size())];
            break;
        case 1:
            text.erase(at, 1 + pick(random, 40));
            break;
        default:
            text.insert(at, text.substr(pick(random, text.size()), pick(random, 40)));
        }
    }
}

} // namespace ptxtest
