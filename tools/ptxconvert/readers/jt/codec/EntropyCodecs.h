#pragma once

#include "tools/ptxconvert/readers/jt/codec/CodeTable.h"

namespace ptx::jt
{

// What is wrong with an array is told by `cursor`; there are no values then.

/// Values with prefixes that say how the bit width changes, as in version 8.
Values decodeBitLengths(const CodeText& text, Cursor& cursor);

/// Values of one bit width, or runs of them with a width each, as in version `major`, 9 or 10.
Values decodeBitLengths(const CodeText& text, int major, Cursor& cursor);

/// `escaped` are the values that escapes stand for, in their order.
Values decodeHuffman(const CodeText& text, const CodeTable& table, const Values& escaped, Cursor& cursor);

/// The same; entries say which table is the next. Escapes of the second table stand for no value.
Values decodeArithmetic(const CodeText& text, const std::vector<CodeTable>& tables, const Values& escaped,
                        Cursor& cursor);

} // namespace ptx::jt
