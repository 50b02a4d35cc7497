#include "tools/ptxconvert/readers/jt/container/CountedText.h"

#include <algorithm>
#include <vector>

namespace ptx::jt
{

namespace
{

constexpr char32_t NoCharacter = 0xFFFD;
constexpr std::string_view UserMark = "::";

bool isLead(char32_t unit)
{
    return unit >= 0xD800 && unit < 0xDC00;
}

bool isTrail(char32_t unit)
{
    return unit >= 0xDC00 && unit < 0xE000;
}

bool isText(char32_t character)
{
    return (character >= 0x20 || character == '\t' || character == '\n' || character == '\r') && character != 0x7F &&
           (character & 0xFFFE) != 0xFFFE && !isLead(character) && !isTrail(character);
}

void append(std::string& text, char32_t c)
{
    if (!isText(c))
        c = NoCharacter;
    const auto tail = [&](unsigned shift) { text += static_cast<char>(0x80 | (c >> shift & 0x3F)); };
    if (c < 0x80) {
        text += static_cast<char>(c);
    } else if (c < 0x800) {
        text += static_cast<char>(0xC0 | c >> 6);
        tail(0);
    } else if (c < 0x10000) {
        text += static_cast<char>(0xE0 | c >> 12);
        tail(6);
        tail(0);
    } else {
        text += static_cast<char>(0xF0 | c >> 18);
        tail(12);
        tail(6);
        tail(0);
    }
}

// Takes ";number" and what follows it off; false if there is none.
bool cutNumber(std::string_view& name)
{
    const std::size_t mark = name.rfind(';');
    if (mark == std::string_view::npos)
        return false;
    std::string_view digits = name.substr(mark + 1);
    if (digits.starts_with('-'))
        digits.remove_prefix(1);
    if (digits.empty() || !std::all_of(digits.begin(), digits.end(), [](char c) { return c >= '0' && c <= '9'; }))
        return false;
    name = name.substr(0, mark);
    return true;
}

char lower(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

} // namespace

std::string readText(Cursor& in)
{
    std::vector<char32_t> units(in.count(2));
    for (char32_t& unit : units)
        unit = in.number<std::uint16_t>();
    while (!units.empty() && units.back() == 0)
        units.pop_back();
    std::string text;
    for (std::size_t i = 0; i < units.size(); ++i) {
        const bool isPair = isLead(units[i]) && i + 1 < units.size() && isTrail(units[i + 1]);
        append(text, isPair ? 0x10000 + ((units[i] - 0xD800) << 10) + (units[i + 1] - 0xDC00) : units[i]);
        i += isPair ? 1 : 0;
    }
    return text;
}

std::string shownName(const std::string& name)
{
    std::string_view shown = name;
    if (shown.ends_with(':')) {
        shown.remove_suffix(1);
        const bool hasFirst = cutNumber(shown);
        if (!hasFirst || !cutNumber(shown))
            shown = name;
    }
    for (const std::string_view ending : {".part", ".asm"})
        if (shown.size() > ending.size() && isSameWord(shown.substr(shown.size() - ending.size()), ending))
            return std::string(shown.substr(0, shown.size() - ending.size()));
    return std::string(shown);
}

std::string_view bareKey(std::string_view key)
{
    return isUserKey(key) ? key.substr(0, key.size() - UserMark.size()) : key;
}

bool isUserKey(std::string_view key)
{
    return key.ends_with(UserMark);
}

bool isSameWord(std::string_view a, std::string_view b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) { return lower(x) == lower(y); });
}

} // namespace ptx::jt
