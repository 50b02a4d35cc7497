#pragma once

#include <string_view>

namespace osg
{

/// Whether `text` as a whole is of the form of `pattern`, in which "*" stands for any number of bytes and "?" for one
/// letter of UTF-8. Case counts. Takes at most the product of both lengths.
bool matchesPattern(std::string_view pattern, std::string_view text);

} // namespace osg
