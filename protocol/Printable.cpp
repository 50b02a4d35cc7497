#include "protocol/Printable.h"

#include <algorithm>

namespace protocol
{

namespace
{

/// How many bytes a letter of UTF-8 has that begins with this one; 0 where none does.
std::size_t sizeBegunBy(unsigned char first)
{
    if (first < 0x80)
        return 1;
    return first < 0xC2 ? 0 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : first < 0xF5 ? 4 : 0;
}

bool isControl(std::string_view letter)
{
    const auto first = static_cast<unsigned char>(letter.front());
    return first < ' ' || first == 0x7F || (first == 0xC2 && static_cast<unsigned char>(letter[1]) < 0xA0);
}

bool turnsDirection(std::string_view letter)
{
    const auto isWithin = [letter](std::string_view low, std::string_view high) {
        return letter >= low && letter <= high;
    };
    return letter == "\u061c" || isWithin("\u200e", "\u200f") || isWithin("\u202a", "\u202e") ||
           isWithin("\u2066", "\u2069");
}

std::string escaped(std::string_view bytes)
{
    std::string result;
    for (const char c : bytes) {
        char code[8];
        std::snprintf(code, sizeof code, "\\x%02x", static_cast<unsigned>(static_cast<unsigned char>(c)));
        result += code;
    }
    return result;
}

/// Control characters among `kept` stay.
std::string printableBut(std::string_view text, std::string_view kept)
{
    std::string result;
    result.reserve(text.size());
    while (!text.empty()) {
        const std::size_t size = letterSize(text);
        const std::string_view letter = text.substr(0, std::max(size, std::size_t(1)));
        text.remove_prefix(letter.size());
        const bool isSafe = size > 0 && !isControl(letter) && !turnsDirection(letter);
        if (isSafe || kept.find(letter) != kept.npos)
            result += letter;
        else
            result += escaped(letter);
    }
    return result;
}

} // namespace

/// The second byte tells longer forms of letters than need be, halves of pairs and what lies beyond U+10FFFF.
std::size_t letterSize(std::string_view text)
{
    const auto at = [text](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const std::size_t size = text.empty() ? 0 : sizeBegunBy(at(0));
    if (size > text.size())
        return 0;
    for (std::size_t i = 1; i < size; ++i)
        if ((at(i) & 0xC0) != 0x80)
            return 0;
    const bool isWrong = size > 1 && ((at(0) == 0xE0 && at(1) < 0xA0) || (at(0) == 0xED && at(1) >= 0xA0) ||
                                      (at(0) == 0xF0 && at(1) < 0x90) || (at(0) == 0xF4 && at(1) >= 0x90));
    return isWrong ? 0 : size;
}

std::string printableLine(std::string_view text)
{
    return printableBut(text, {});
}

std::string printable(std::string_view text)
{
    return printableBut(text, "\n\t");
}

void print(std::FILE* stream, std::string_view text)
{
    const std::string safe = printable(text);
    std::fwrite(safe.data(), 1, safe.size(), stream);
}

} // namespace protocol
