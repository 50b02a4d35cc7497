#pragma once

#include "ptx/readers/jt/codec/CodeText.h"

namespace ptx::jt::codec
{

// What is wrong with an array is told by `cursor`; there are no values then.

/// Values with prefixes that say how the bit width changes, as in version 8.
Values decodeBitLengths(const CodeText& text, container::Cursor& cursor);

/// Values of one bit width, or runs of them with a width each, as in version `major`, 9 or 10.
Values decodeBitLengths(const CodeText& text, int major, container::Cursor& cursor);

} // namespace ptx::jt::codec
