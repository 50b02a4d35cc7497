#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace ptx::step::p21
{

constexpr std::size_t Nowhere = std::string_view::npos;

inline bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

/// Keywords are capitals by the standard; some systems write others.
inline bool isWordLetter(char c)
{
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || isDigit(c) || c == '_';
}

/// Blanks, ends of lines, and the other signs without a picture, NUL too.
inline bool isBlank(char c)
{
    return static_cast<unsigned char>(c) <= ' ';
}

/// Where the blanks and comments at `at` end. A comment without an end reaches to the end of the text.
std::size_t afterComments(std::string_view text, std::size_t at);

/// The same, at once where there is nothing to pass over.
inline std::size_t afterBlanks(std::string_view text, std::size_t at)
{
    if (at < text.size() && !isBlank(text[at]) && text[at] != '/')
        return at;
    return afterComments(text, at);
}

/// Where the word at `at` ends; `at` when none is there.
inline std::size_t afterWord(std::string_view text, std::size_t at)
{
    while (at < text.size() && isWordLetter(text[at]))
        ++at;
    return at;
}

/// Where the string whose first quote is at `at` ends, doubled quotes passed over; Nowhere when it does not end.
std::size_t afterString(std::string_view text, std::size_t at);

/// The number behind "#", and where it ends.
struct Name {
    std::uint32_t number;
    std::size_t end;
};

/// The name at `at`; nothing when it is none, is 0, or is too large to count with (2147483647).
inline std::optional<Name> nameAt(std::string_view text, std::size_t at)
{
    constexpr std::uint64_t MaxNumber = 0x7FFFFFFF;
    std::uint64_t number = 0;
    std::size_t end = at + 1;
    for (; end < text.size() && isDigit(text[end]) && number <= MaxNumber; ++end)
        number = number * 10 + static_cast<std::uint64_t>(text[end] - '0');
    if (number == 0 || number > MaxNumber)
        return std::nullopt;
    return Name{static_cast<std::uint32_t>(number), end};
}

/// Where, from `from` on, the next line or statement begins that looks like the start of a record or like the end of
/// its section: "#12=" or "ENDSEC". The signs before `from` tell whether one begins there. The end of the text when
/// there is none. Strings and comments are not looked at, so that it may lie in one.
std::size_t nextStart(std::string_view text, std::size_t from);

} // namespace ptx::step::p21
