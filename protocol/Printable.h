#pragma once

#include <cstddef>
#include <cstdio>
#include <string>
#include <string_view>

namespace protocol
{

/// How many bytes the letter of UTF-8 at the beginning of `text` has; 0 for bytes that are none, and for no bytes.
std::size_t letterSize(std::string_view text);

/// `text` as a terminal may have it, and a log that is shown in one: a terminal obeys control characters, and letters
/// that turn the direction of writing make a name look like another. These (below U+0020, U+007F to U+009F, U+061C,
/// U+200E, U+200F, U+202A to U+202E, U+2066 to U+2069) and bytes that are no UTF-8 become "\x1b" and the like, byte by
/// byte. Everything else stays.
std::string printableLine(std::string_view text);

/// The same for several lines: line ends and tabs stay.
std::string printable(std::string_view text);

/// Writes `printable(text)`.
void print(std::FILE* stream, std::string_view text);

} // namespace protocol
