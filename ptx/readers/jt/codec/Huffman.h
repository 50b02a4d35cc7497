#pragma once

#include "ptx/readers/jt/codec/CodeTable.h"

namespace ptx::jt::codec
{

/// `escaped` are the values that escapes stand for, in their order. What is wrong is told by `cursor`; there are no
/// values then.
Values decodeHuffman(const CodeText& text, const CodeTable& table, const Values& escaped, container::Cursor& cursor);

} // namespace ptx::jt::codec
