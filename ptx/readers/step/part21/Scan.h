#pragma once

#include "ptx/readers/step/part21/Records.h"

namespace ptx::step::part21
{

/// Finds all records of `text`, on up to `threads` threads, which has no effect on the records. The text is read once,
/// and a little of it twice where a thread began within a string or a comment.
Records scan(std::string_view text, unsigned threads);

} // namespace ptx::step::part21
