#include "ptx/readers/step/p21/Records.h"

#include <algorithm>

namespace ptx::step::p21
{

std::size_t Records::recordCount() const
{
    std::size_t count = 0;
    for (const Piece& piece : pieces)
        count += piece.records.size();
    return count;
}

std::size_t Records::parameterCount() const
{
    std::size_t count = 0;
    for (const Piece& piece : pieces)
        count += piece.parameters.size();
    return count;
}

std::vector<Damage> Records::damages() const
{
    std::vector<Damage> all;
    for (const Piece& piece : pieces)
        all.insert(all.end(), piece.damages.begin(), piece.damages.end());
    return all;
}

std::size_t lineOf(std::string_view text, std::uint64_t offset)
{
    const std::string_view before = text.substr(0, static_cast<std::size_t>(offset));
    return 1 + static_cast<std::size_t>(std::count(before.begin(), before.end(), '\n'));
}

std::string describe(std::string_view text, const Damage& damage)
{
    std::string words = damage.number == 0 ? std::string() : "#" + std::to_string(damage.number) + " in ";
    words += "line " + std::to_string(lineOf(text, damage.offset)) + ": ";
    return words + damage.cause;
}

} // namespace ptx::step::p21
