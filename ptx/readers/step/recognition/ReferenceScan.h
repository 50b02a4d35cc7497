#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace ptx::step::recognition
{

/// The names of other files that a STEP text gives for its parts, by a look at the text alone: about a millisecond for
/// a megabyte. It may name a document that is no part, but misses none of those that are. Each name once, in the order
/// of the text; for a document with several names, all of them.
std::vector<std::string> scanReferences(std::string_view text);

/// The same for the file `path`; nothing when it cannot be read.
std::vector<std::string> referencesOf(const std::string& path);

} // namespace ptx::step::recognition
