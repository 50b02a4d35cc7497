#pragma once

#include <string>
#include <string_view>
#include <vector>

/// The two forms in which documents write lists of numbers. Numbers are read in the C locale, whatever the program's
/// locale is.
namespace HB::XML::CAD
{

/// Appends the numbers of a transform's text, which are separated by exactly one blank. All but the last are read as
/// double and narrowed (so that what is beyond a float becomes infinite); the last is read as float. A token counts as
/// the number that it begins with, in any form that the C library reads; white space before it is skipped.
/// @throws std::invalid_argument "invalid stod argument", "invalid stof argument": a token before the last, the last
///         token, does not begin with a number
/// @throws std::out_of_range "stod argument out of range", "stof argument out of range": a token before the last, the
///         last token, is too large for its type, or so small that nothing is left of it. A denormal number is a
///         number.
void parseTransformValues(std::string_view text, std::vector<float>& values);

/// Replaces `list` by the numbers of a text, which are separated by any white space, as formatted extraction from a
/// stream gives them until it meets the end. Text that ends in white space has its last number twice, and empty text
/// has one element, 0.
/// @throws std::bad_alloc an extraction failed with text left (a word): the list would never come to an end
void parseFloatList(const std::string& text, std::vector<float>& list);

} // namespace HB::XML::CAD
