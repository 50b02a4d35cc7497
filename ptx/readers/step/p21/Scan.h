#pragma once

#include "ptx/readers/step/p21/Records.h"

namespace ptx::step::p21
{

/// The least text for a thread of its own, which costs more than it saves on less.
constexpr std::uint64_t LeastShare = std::uint64_t{256} << 10;

/// Finds all records of `text`, on up to `threads` threads with `leastShare` bytes each at least. Neither has an effect
/// on the records. The text is read once, and a part of it twice where a thread began within a string or a comment.
Records scan(std::string_view text, unsigned threads, std::uint64_t leastShare = LeastShare);

} // namespace ptx::step::p21
