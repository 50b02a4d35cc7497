#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include <QString>

namespace files::obj
{

/// Walks over the statements of a text of the OBJ family: one a line, words between blanks, '#' begins a comment, a '\'
/// at the end of a line goes on in the next.
class TextLines
{
public:
    /// `text` outlives this object.
    explicit TextLines(std::string_view text);

    /// Goes to the next statement; false at the end.
    bool next();
    /// The line that the statement begins in, counted from 1.
    std::uint64_t number() const { return m_number; }
    /// The first word of the statement.
    std::string_view keyword() const { return m_keyword; }
    /// What follows the keyword, without blanks around it; not changed by `takeWord`.
    std::string_view rest() const { return m_rest; }
    /// The next word after the keyword, empty at the end and from a comment on.
    std::string_view takeWord();

private:
    std::string_view takeLine();
    std::string_view takeStatement();

    std::string_view m_text;
    std::string m_joined;
    std::string_view m_keyword;
    std::string_view m_rest;
    std::string_view m_words;
    std::uint64_t m_number = 0;
    std::uint64_t m_linesTaken = 0;
};

/// The number that `word` is, in the C locale whatever the program's is; none if it is something else or not finite as
/// a float.
std::optional<float> numberOf(std::string_view word);

/// Appends a blank and the shortest text that reads back as `number`.
void appendNumber(std::string& text, float number);

/// Text of a file as UTF-8: what is no UTF-8 is taken for Latin-1.
QString textOf(std::string_view bytes);

} // namespace files::obj
