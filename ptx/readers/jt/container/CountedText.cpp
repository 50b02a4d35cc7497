#include "ptx/readers/jt/container/CountedText.h"

#include <vector>

namespace ptx::jt::container
{

namespace
{

constexpr char32_t NoCharacter = 0xFFFD;

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

} // namespace ptx::jt::container
