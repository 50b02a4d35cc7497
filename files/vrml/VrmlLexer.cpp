#include "files/vrml/VrmlLexer.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace files::vrml
{

namespace
{

enum CharClass : unsigned char { Other, Blank, Bracket };

constexpr std::array<CharClass, 256> makeClasses()
{
    std::array<CharClass, 256> classes = {};
    for (std::size_t c = 0; c <= ' '; ++c)
        classes[c] = Blank;
    classes[','] = Blank;
    for (const char c : {'{', '}', '[', ']', '"', '#'})
        classes[static_cast<unsigned char>(c)] = Bracket;
    return classes;
}

constexpr std::array<CharClass, 256> classes = makeClasses();

CharClass classOf(char c)
{
    return classes[static_cast<unsigned char>(c)];
}

bool isNumberStart(char c)
{
    return (c >= '0' && c <= '9') || c == '-' || c == '.' || c == '+';
}

} // namespace

Lexer::Lexer(const Source& source)
    : m_source(source), m_begin(source.text().data()), m_here(m_begin), m_end(m_begin + source.text().size())
{
    if (source.text().starts_with("\xEF\xBB\xBF"))
        m_here += 3;
}

void Lexer::fail(const QString& message) const
{
    m_source.fail(ErrorCode::Damaged, message, static_cast<std::size_t>(m_here - m_begin));
}

inline void Lexer::skipBlanks()
{
    for (;;) {
        while (m_here != m_end && classOf(*m_here) == Blank)
            ++m_here;
        if (m_here == m_end || *m_here != '#')
            return;
        while (m_here != m_end && *m_here != '\n' && *m_here != '\r')
            ++m_here;
    }
}

bool Lexer::atEnd()
{
    skipBlanks();
    return m_here == m_end;
}

char Lexer::peek()
{
    skipBlanks();
    return m_here == m_end ? '\0' : *m_here;
}

std::size_t Lexer::offset()
{
    skipBlanks();
    return static_cast<std::size_t>(m_here - m_begin);
}

bool Lexer::accept(char bracket)
{
    if (peek() != bracket)
        return false;
    ++m_here;
    return true;
}

void Lexer::expect(char bracket)
{
    if (!accept(bracket))
        fail(m_here == m_end ? tr("the file ends too early") : tr("'%1' was expected").arg(QLatin1Char(bracket)));
}

std::string_view Lexer::wordHere() const
{
    const char* end = std::find_if(m_here, m_end, [](char c) { return classOf(c) != Other; });
    return {m_here, static_cast<std::size_t>(end - m_here)};
}

bool Lexer::acceptWord(std::string_view wanted)
{
    skipBlanks();
    if (wordHere() != wanted)
        return false;
    m_here += wanted.size();
    return true;
}

std::string_view Lexer::takeWord()
{
    skipBlanks();
    const std::string_view word = wordHere();
    if (word.empty())
        fail(m_here == m_end ? tr("the file ends too early") : tr("a name was expected"));
    m_here += word.size();
    return word;
}

bool Lexer::atNumber()
{
    return isNumberStart(peek());
}

void Lexer::failAtNumber() const
{
    if (m_here == m_end)
        fail(tr("the file ends too early"));
    const std::string_view word = wordHere();
    fail(word.empty() ? tr("a number was expected") : tr("'%1' is no number").arg(quoted(word)));
}

/// What does not fit into a float: too small is 0, too large is refused.
float Lexer::takeLargeOrSmall(const char* start)
{
    double value = 0;
    const auto [end, error] = std::from_chars(start, m_end, value);
    const std::string_view text(start, static_cast<std::size_t>(end - start));
    const bool isSmall = text.find("e-") != std::string_view::npos || text.find("E-") != std::string_view::npos;
    if (error == std::errc::result_out_of_range && !isSmall)
        fail(tr("the number %1 is too large").arg(quoted(text)));
    if (std::abs(value) > double(std::numeric_limits<float>::max()))
        fail(tr("the number %1 is too large").arg(quoted(text)));
    m_here = end;
    return error == std::errc() ? static_cast<float>(value) : 0;
}

float Lexer::takeFloat()
{
    skipBlanks();
    if (m_here == m_end || !isNumberStart(*m_here))
        failAtNumber();
    const char* start = m_here + (*m_here == '+' ? 1 : 0);
    float value = 0;
    const auto [end, error] = std::from_chars(start, m_end, value);
    if (error == std::errc::result_out_of_range)
        return takeLargeOrSmall(start);
    if (error != std::errc() || (end != m_end && classOf(*end) == Other) || !std::isfinite(value))
        failAtNumber();
    m_here = end;
    return value;
}

std::int32_t Lexer::takeInt()
{
    skipBlanks();
    if (m_here == m_end || !isNumberStart(*m_here))
        failAtNumber();
    const char* start = m_here + (*m_here == '+' ? 1 : 0);
    const bool isHex = m_end - start > 2 && start[0] == '0' && (start[1] == 'x' || start[1] == 'X');
    std::int64_t value = 0;
    const auto [end, error] = std::from_chars(start + (isHex ? 2 : 0), m_end, value, isHex ? 16 : 10);
    constexpr std::int64_t lowest = std::numeric_limits<std::int32_t>::min();
    const bool isGood = error == std::errc() && value >= lowest && value <= std::numeric_limits<std::uint32_t>::max();
    if (!isGood || (end != m_end && classOf(*end) == Other))
        failAtNumber();
    m_here = end;
    return static_cast<std::int32_t>(value); // 0xFFFFFFFF is a value of pixels
}

void Lexer::skipString()
{
    const char* start = m_here++;
    while (m_here != m_end && *m_here != '"')
        m_here += *m_here == '\\' && m_end - m_here > 1 ? 2 : 1;
    if (m_here == m_end) {
        m_here = start;
        fail(tr("a string does not end"));
    }
    ++m_here;
}

std::string Lexer::takeString()
{
    if (peek() != '"')
        fail(m_here == m_end ? tr("the file ends too early") : tr("a string was expected"));
    const char* start = m_here + 1;
    skipString();
    std::string text;
    for (const char* c = start; c != m_here - 1; ++c) {
        if (*c == '\\' && c + 1 != m_here - 1)
            ++c;
        text += *c;
    }
    return text;
}

void Lexer::skipToClosing()
{
    const std::size_t start = offset();
    for (std::uint64_t open = 1; open > 0;) {
        const char c = peek();
        if (m_here == m_end)
            m_source.fail(ErrorCode::Damaged, tr("what begins here does not end"), start);
        if (c == '"') {
            skipString();
            continue;
        }
        if (c == '{' || c == '[')
            ++open;
        else if (c == '}' || c == ']')
            --open;
        m_here += classOf(c) == Other ? wordHere().size() : 1;
    }
}

void Lexer::skipValue()
{
    const auto isPlain = [this] {
        skipBlanks();
        const std::string_view word = wordHere();
        return atNumber() || word == "TRUE" || word == "FALSE" || word == "NULL";
    };
    if (accept('['))
        return skipToClosing();
    if (peek() == '"')
        return skipString();
    if (!isPlain()) {
        if (acceptWord("USE") || acceptWord("IS")) {
            takeWord();
            return;
        }
        if (acceptWord("DEF"))
            takeWord();
        takeWord();
        expect('{');
        return skipToClosing();
    }
    while (isPlain())
        takeWord();
}

} // namespace files::vrml
