#include "ptx/readers/stl/StlText.h"

#include <charconv>
#include <cmath>

namespace ptx::stl
{

namespace
{

constexpr std::size_t ReportEach = 1024;

bool isBlank(char c)
{
    return c == ' ' || c == '\t' || c == '\r' || c == '\n' || c == '\v' || c == '\f';
}

char lower(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool isWord(std::string_view text, std::string_view word)
{
    if (text.size() != word.size())
        return false;
    for (std::size_t i = 0; i < text.size(); ++i)
        if (lower(text[i]) != word[i])
            return false;
    return true;
}

class TextParser
{
public:
    TextParser(std::string_view content, core::Progress& progress) : m_content(content), m_progress(progress) {}

    core::Outcome<TextResult> parse()
    {
        for (std::string_view word = next(); !word.empty(); word = next()) {
            if (!isWord(word, "solid"))
                return wrong("solid", word);
            m_result.solids.emplace_back().name = restOfLine();
            if (core::Trouble trouble = parseSolid())
                return *trouble;
        }
        return std::move(m_result);
    }

private:
    core::Trouble parseSolid()
    {
        while (true) {
            const std::string_view word = next();
            if (word.empty())
                return cutOff();
            if (isWord(word, "endsolid")) {
                restOfLine();
                return std::nullopt;
            }
            if (!isWord(word, "facet"))
                return wrong("facet", word);
            if (core::Trouble trouble = parseFacet())
                return trouble;
            if (m_isAtEnd)
                return cutOff();
        }
    }

    core::Trouble parseFacet()
    {
        Facet facet;
        core::Trouble trouble = expect({"normal"});
        if (!trouble)
            trouble = parseVector(facet.normal, false);
        if (!trouble)
            trouble = expect({"outer", "loop"});
        for (osg::Vec3f& corner : facet.corners) {
            if (!trouble)
                trouble = expect({"vertex"});
            if (!trouble)
                trouble = parseVector(corner, true);
        }
        if (!trouble)
            trouble = expect({"endloop", "endfacet"});
        if (trouble || m_isAtEnd)
            return trouble;
        std::vector<Facet>& facets = m_result.solids.back().facets;
        facets.push_back(facet);
        if (facets.size() % ReportEach == 0)
            m_progress.report(static_cast<double>(m_position) / static_cast<double>(m_content.size()));
        return std::nullopt;
    }

    core::Trouble expect(std::initializer_list<std::string_view> words)
    {
        for (const std::string_view word : words) {
            const std::string_view found = next();
            if (!m_isAtEnd && !isWord(found, word))
                return wrong(word, found);
        }
        return std::nullopt;
    }

    core::Trouble parseVector(osg::Vec3f& vector, bool mustBeFinite)
    {
        for (float* value : {&vector.x, &vector.y, &vector.z}) {
            std::string_view text = next();
            if (m_isAtEnd)
                return std::nullopt;
            const std::string_view given = text;
            if (text.starts_with('+'))
                text.remove_prefix(1);
            // As double: a value too small for a float is no error.
            double number = 0;
            const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
            const bool isNumber = end == text.data() + text.size() && error != std::errc::invalid_argument;
            *value = static_cast<float>(number);
            if (!isNumber || (mustBeFinite && !std::isfinite(*value)))
                return wrong("a number", given);
        }
        return std::nullopt;
    }

    /// The next word, empty at the end of the file.
    std::string_view next()
    {
        while (m_position < m_content.size() && isBlank(m_content[m_position])) {
            m_line += m_content[m_position] == '\n' ? 1 : 0;
            ++m_position;
        }
        const std::size_t start = m_position;
        while (m_position < m_content.size() && !isBlank(m_content[m_position]))
            ++m_position;
        m_isAtEnd = start == m_position;
        return m_content.substr(start, m_position - start);
    }

    std::string restOfLine()
    {
        std::size_t end = m_content.find_first_of("\r\n", m_position);
        end = end == std::string_view::npos ? m_content.size() : end;
        std::string_view rest = m_content.substr(m_position, end - m_position);
        m_position = end;
        while (!rest.empty() && isBlank(rest.front()))
            rest.remove_prefix(1);
        while (!rest.empty() && isBlank(rest.back()))
            rest.remove_suffix(1);
        return std::string(rest);
    }

    core::Trouble cutOff()
    {
        m_result.isCutOff = true;
        return std::nullopt;
    }

    core::Failure wrong(std::string_view expected, std::string_view found) const
    {
        constexpr std::size_t Longest = 40;
        return {core::ExitCode::Damaged, "line " + std::to_string(m_line) + " of the STL text: expected \"" +
                                             std::string(expected) + "\", found \"" +
                                             std::string(found.substr(0, Longest)) + "\""};
    }

    std::string_view m_content;
    core::Progress& m_progress;
    std::size_t m_position = 0;
    std::size_t m_line = 1;
    bool m_isAtEnd = false;
    TextResult m_result;
};

} // namespace

core::Outcome<TextResult> readText(std::string_view content, core::Progress& progress)
{
    return TextParser(content, progress).parse();
}

} // namespace ptx::stl
