#include "files/obj/TextLines.h"

#include <QTextCodec>

#include <charconv>
#include <cmath>
#include <limits>

namespace files::obj
{

namespace
{

constexpr std::string_view blanks = " \t\r\v\f";

std::string_view trimmed(std::string_view text)
{
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

/// Takes the first word off `text`.
std::string_view takeFirst(std::string_view& text)
{
    const std::string_view word = text.substr(0, text.find_first_of(blanks));
    text = trimmed(text.substr(word.size()));
    return word;
}

} // namespace

TextLines::TextLines(std::string_view text) : m_text(text)
{
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    if (m_text.starts_with(byteOrderMark))
        m_text.remove_prefix(byteOrderMark.size());
}

std::string_view TextLines::takeLine()
{
    const std::size_t end = m_text.find('\n');
    const std::string_view line = m_text.substr(0, end);
    m_text.remove_prefix(end == std::string_view::npos ? m_text.size() : end + 1);
    ++m_linesTaken;
    return trimmed(line);
}

std::string_view TextLines::takeStatement()
{
    std::string_view line = takeLine();
    m_number = m_linesTaken;
    if (!line.ends_with('\\'))
        return line;
    m_joined.clear();
    while (line.ends_with('\\')) {
        m_joined.append(line.substr(0, line.size() - 1)).append(1, ' ');
        line = takeLine();
    }
    return trimmed(m_joined.append(line));
}

bool TextLines::next()
{
    while (!m_text.empty()) {
        std::string_view statement = takeStatement();
        if (statement.empty() || statement.front() == '#')
            continue;
        m_keyword = takeFirst(statement);
        m_rest = m_words = statement;
        return true;
    }
    return false;
}

std::string_view TextLines::takeWord()
{
    if (m_words.starts_with('#'))
        return {};
    return takeFirst(m_words);
}

std::optional<float> numberOf(std::string_view word)
{
    if (word.starts_with('+'))
        word.remove_prefix(1);
    double value = 0;
    const char* end = word.data() + word.size();
    const auto [rest, error] = std::from_chars(word.data(), end, value);
    if (error != std::errc() || rest != end || !(std::abs(value) <= double(std::numeric_limits<float>::max())))
        return std::nullopt;
    return static_cast<float>(value);
}

void appendNumber(std::string& text, float number)
{
    char digits[32];
    const auto [end, error] = std::to_chars(digits, digits + sizeof(digits), number);
    text.append(1, ' ').append(digits, end);
}

QString textOf(std::string_view bytes)
{
    constexpr int utf8 = 106;
    QTextCodec::ConverterState state;
    const int length = static_cast<int>(bytes.size());
    const QString text = QTextCodec::codecForMib(utf8)->toUnicode(bytes.data(), length, &state);
    const bool isUtf8 = state.invalidChars == 0 && state.remainingChars == 0;
    return isUtf8 ? text : QString::fromLatin1(bytes.data(), length);
}

} // namespace files::obj
