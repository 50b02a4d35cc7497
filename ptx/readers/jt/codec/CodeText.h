#pragma once

#include "ptx/readers/jt/container/Cursor.h"

#include <vector>

namespace ptx::jt::codec
{

using Values = std::vector<std::int32_t>;

/// The bits of one packed array.
struct CodeText {
    container::Bytes words; ///< of 32 bits each
    std::uint64_t bits = 0;
    std::size_t count = 0;   ///< of the values that come out
    std::size_t symbols = 0; ///< that the bits stand for
    unsigned flip = 0;       ///< as BitReader has it
};

/// Tells `cursor` what is wrong with an array. @return no values
inline Values failed(container::Cursor& cursor, const char* what)
{
    cursor.fail(what);
    return {};
}

} // namespace ptx::jt::codec
