#pragma once

#include "ptx/readers/jt/codec/CodeTable.h"

namespace ptx::jt::codec
{

/// `escaped` are the values that escapes stand for, in their order; entries of `tables` say which one is the next.
/// Escapes of the second table stand for no value. What is wrong is told by `cursor`; there are no values then.
Values decodeArithmetic(const CodeText& text, const std::vector<CodeTable>& tables, const Values& escaped,
                        container::Cursor& cursor);

} // namespace ptx::jt::codec
