#pragma once

#include "ptx/readers/jt/codec/CodeText.h"

namespace ptx::jt::codec
{

/// What one symbol of a packed array stands for, and how often it occurs.
struct CodeEntry {
    static constexpr std::int32_t Escape = -2; ///< stands for a value that is told elsewhere
    std::int32_t symbol;
    std::uint32_t occurrences;
    std::int32_t value;
    std::uint32_t next; ///< the table that the next symbol is looked up in
};

using CodeTable = std::vector<CodeEntry>;

/// The one or two tables of an array of version 8; none when they are damaged, which `cursor` tells.
std::vector<CodeTable> readTables(container::Cursor& cursor);

/// The one table of an array of version `major`, 9 or 10; none when it is damaged, which `cursor` tells.
std::vector<CodeTable> readTable(container::Cursor& cursor, int major);

} // namespace ptx::jt::codec
