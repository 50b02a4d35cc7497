#pragma once

#include <string>
#include <string_view>

namespace ptx::step::p21
{

/// The quoted string that `text` begins with, its quotes included; empty when it begins with something else or the
/// string never ends.
std::string_view quotedString(std::string_view text);

/// What a quoted string means, as UTF-8: doubled quotes and backslashes, and letters written as \S\, \X\, \X2\ or
/// \X4\. A sequence that is none of these stays as it is.
std::string decodedString(std::string_view quoted);

} // namespace ptx::step::p21
