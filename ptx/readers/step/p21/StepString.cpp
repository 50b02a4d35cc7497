#include "ptx/readers/step/p21/StepString.h"

#include <charconv>
#include <cstdint>
#include <optional>

namespace ptx::step::p21
{

namespace
{

void appendUtf8(std::string& text, std::uint32_t letter)
{
    const auto tail = [&](int shift) { text += static_cast<char>(0x80 | ((letter >> shift) & 0x3F)); };
    if (letter < 0x80) {
        text += static_cast<char>(letter);
    } else if (letter < 0x800) {
        text += static_cast<char>(0xC0 | (letter >> 6));
        tail(0);
    } else if (letter < 0x10000) {
        text += static_cast<char>(0xE0 | (letter >> 12));
        tail(6);
        tail(0);
    } else if (letter < 0x110000) {
        text += static_cast<char>(0xF0 | (letter >> 18));
        tail(12);
        tail(6);
        tail(0);
    }
}

class Decoder
{
public:
    explicit Decoder(std::string_view inner) : m_rest(inner) {}

    std::string decode()
    {
        while (!m_rest.empty())
            if (!takeDoubled("''") && !takeDoubled("\\\\") && !takeSequence())
                take(m_rest[0], 1);
        return std::move(m_text);
    }

private:
    void take(char c, std::size_t length)
    {
        m_text += c;
        m_rest.remove_prefix(length);
    }

    bool takeDoubled(std::string_view pair)
    {
        if (!m_rest.starts_with(pair))
            return false;
        take(pair[0], 2);
        return true;
    }

    bool takeSequence()
    {
        if (m_rest.starts_with("\\S\\") && m_rest.size() > 3) {
            appendUtf8(m_text, static_cast<unsigned char>(m_rest[3]) + 128u);
            m_rest.remove_prefix(4);
            return true;
        }
        return takeLetters("\\X\\", 2, false) || takeLetters("\\X2\\", 4, true) || takeLetters("\\X4\\", 8, true);
    }

    bool takeLetters(std::string_view start, std::size_t digits, bool isList)
    {
        constexpr std::string_view End = "\\X0\\";
        if (!m_rest.starts_with(start))
            return false;
        std::string_view rest = m_rest.substr(start.size());
        std::string letters;
        while (const std::optional<std::uint32_t> letter = number(rest, digits)) {
            appendLetter(letters, *letter);
            rest.remove_prefix(digits);
            if (!isList)
                break;
        }
        if (letters.empty() || (isList && !rest.starts_with(End)))
            return false;
        m_text += letters;
        m_rest = isList ? rest.substr(End.size()) : rest;
        return true;
    }

    // Letters beyond 16 bits come as pairs of halves from some systems.
    void appendLetter(std::string& letters, std::uint32_t letter)
    {
        if (letter >= 0xD800 && letter < 0xDC00) {
            m_highHalf = letter;
        } else if (letter >= 0xDC00 && letter < 0xE000) {
            appendUtf8(letters, 0x10000 + ((m_highHalf & 0x3FF) << 10) + (letter & 0x3FF));
        } else {
            appendUtf8(letters, letter);
        }
    }

    static std::optional<std::uint32_t> number(std::string_view text, std::size_t digits)
    {
        std::uint32_t value = 0;
        if (text.size() < digits)
            return std::nullopt;
        const auto [end, error] = std::from_chars(text.data(), text.data() + digits, value, 16);
        return error == std::errc() && end == text.data() + digits ? std::optional(value) : std::nullopt;
    }

    std::string_view m_rest;
    std::string m_text;
    std::uint32_t m_highHalf = 0xD800;
};

} // namespace

std::string_view quotedString(std::string_view text)
{
    if (text.empty() || text[0] != '\'')
        return {};
    for (std::size_t end = text.find('\'', 1); end != std::string_view::npos; end = text.find('\'', end + 2))
        if (end + 1 == text.size() || text[end + 1] != '\'')
            return text.substr(0, end + 1);
    return {};
}

std::string decodedString(std::string_view quoted)
{
    return quoted.size() < 2 ? std::string() : Decoder(quoted.substr(1, quoted.size() - 2)).decode();
}

} // namespace ptx::step::p21
