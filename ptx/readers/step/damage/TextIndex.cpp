#include "ptx/readers/step/damage/TextIndex.h"

#include "ptx/readers/step/p21/Lexis.h"

#include <algorithm>
#include <charconv>

namespace ptx::step::damage
{

namespace
{

bool isBlank(char c)
{
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

bool isWordLetter(char c)
{
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_';
}

/// Goes through a text token by token and counts the lines. Strings and comments are no tokens.
class Scanner
{
public:
    explicit Scanner(std::string_view text) : m_text(text) {}

    /// Goes on to the next '#' or ';'. @return it, or 0 at the end
    char next()
    {
        for (; m_at < m_text.size(); ++m_at) {
            const char c = m_text[m_at];
            if (c == '\'' || c == '"') {
                const std::size_t start = m_at;
                skipTo({&c, 1});
                if (isNoString(start))
                    return ';';
            } else if (c == '/' && m_text.substr(m_at, 2) == "/*")
                skipTo("*/");
            else if (c == '#' || c == ';')
                return m_text[m_at++];
            else if (c == '\n')
                ++m_line;
        }
        return 0;
    }

    /// The number that stands here; 0 if none does.
    int number()
    {
        int value = 0;
        const char* start = m_text.data() + m_at;
        const char* end = std::from_chars(start, m_text.data() + m_text.size(), value).ptr;
        m_at += static_cast<std::size_t>(end - start);
        return value;
    }

    /// Goes past a '=' and gives the word behind it, or the character when it is none; nothing if there is no '='.
    std::string_view definition()
    {
        skipBlanks();
        if (m_at >= m_text.size() || m_text[m_at] != '=')
            return {};
        ++m_at;
        skipBlanks();
        std::size_t end = m_at;
        while (end < m_text.size() && isWordLetter(m_text[end]))
            ++end;
        return m_text.substr(m_at, std::max<std::size_t>(1, end - m_at));
    }

    int line() const { return m_line; }

private:
    // Stops on the last character of `end`. A quote that stands for itself in a string ends it and begins another.
    void skipTo(std::string_view end)
    {
        const std::size_t from = m_at + 1;
        const std::size_t found = m_text.find(end, from);
        m_at = found == std::string_view::npos ? m_text.size() - 1 : found + end.size() - 1;
        countLines(from);
    }

    /// A string that other records lie in does not end in its own: goes back to where the next of them begins.
    bool isNoString(std::size_t start)
    {
        const std::string_view string = m_text.substr(start, m_at - start);
        if (string.find(';') == std::string_view::npos)
            return false;
        const std::size_t record = p21::nextStart(m_text, start + 1);
        if (record >= m_at)
            return false;
        const std::string_view passed = m_text.substr(record, m_at - record);
        m_line -= static_cast<int>(std::count(passed.begin(), passed.end(), '\n'));
        m_at = record;
        return true;
    }

    void skipBlanks()
    {
        const std::size_t from = m_at;
        while (m_at < m_text.size() && isBlank(m_text[m_at]))
            ++m_at;
        countLines(from);
    }

    void countLines(std::size_t from)
    {
        const std::string_view passed = m_text.substr(from, m_at - from);
        m_line += static_cast<int>(std::count(passed.begin(), passed.end(), '\n'));
    }

    std::string_view m_text;
    std::size_t m_at = 0;
    int m_line = 1;
};

} // namespace

TextIndex::TextIndex(const std::string& path) : m_file(path)
{
    scan(m_file.text());
    std::sort(m_references.begin(), m_references.end());
}

void TextIndex::scan(std::string_view text)
{
    Scanner scanner(text);
    int current = 0;
    while (const char mark = scanner.next()) {
        if (mark == ';') {
            current = 0;
            continue;
        }
        const int line = scanner.line();
        const int ident = scanner.number();
        if (current != 0)
            m_references.emplace_back(ident, current);
        else if (const std::string_view type = scanner.definition(); !type.empty())
            m_entities.try_emplace(current = ident, Entity{line, type});
    }
}

int TextIndex::lineOf(int ident) const
{
    const auto entity = m_entities.find(ident);
    return entity == m_entities.end() ? 0 : entity->second.line;
}

std::string_view TextIndex::typeOf(int ident) const
{
    const auto entity = m_entities.find(ident);
    return entity == m_entities.end() ? std::string_view() : entity->second.type;
}

std::vector<int> TextIndex::referringTo(int ident) const
{
    std::vector<int> result;
    for (auto it = std::lower_bound(m_references.begin(), m_references.end(), std::pair(ident, 0));
         it != m_references.end() && it->first == ident; ++it)
        result.push_back(it->second);
    return result;
}

} // namespace ptx::step::damage
