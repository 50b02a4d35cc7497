#include "cad/xml/XMLTextScan.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace HB::XML::CAD
{

namespace
{
constexpr std::string_view whiteSpace = " \t\n\v\f\r";
constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
constexpr auto npos = std::string_view::npos;

unsigned char byteOf(char c)
{
    return static_cast<unsigned char>(c);
}

char lower(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool startsWithIgnoringCase(std::string_view text, std::string_view prefix)
{
    return text.size() >= prefix.size() &&
           std::equal(prefix.begin(), prefix.end(), text.begin(), [](char p, char t) { return p == lower(t); });
}

// The parser takes all bytes above ASCII for letters.
bool startsName(char c)
{
    return byteOf(c) >= 127 || (lower(c) >= 'a' && lower(c) <= 'z') || c == '_';
}

bool continuesName(char c)
{
    return startsName(c) || (c >= '0' && c <= '9') || c == '-' || c == '.' || c == ':';
}

/// The bytes of a tag that mean something to the scan.
constexpr auto tagMarks = [] {
    std::array<bool, 256> marks{};
    for (const unsigned char mark : {'>', '=', '"', '\''})
        marks[mark] = true;
    return marks;
}();

/// The number of bytes that the parser takes for a character with this first byte.
std::size_t sequenceLength(unsigned char lead)
{
    if (lead < 0xC2 || lead > 0xF4)
        return 1;
    return lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
}

class Scan
{
public:
    Scan(std::string_view text, const XMLLimits& limits) : m_text(text), m_limits(limits) {}

    XMLVerdict run();

private:
    void markup();
    void startTag();
    void endTag();
    void declaration();
    std::size_t declarationValue(std::size_t i, std::string_view& encoding);
    void noteEncoding(std::string_view encoding);
    void skipBehind(std::string_view start, std::string_view end);
    void checkCharacters();

    bool at(std::string_view prefix) const { return m_text.substr(m_at, prefix.size()) == prefix; }
    bool failed() const { return m_verdict.fault != XMLFault::None; }
    void fail(XMLFault fault, std::size_t position) { m_verdict = {fault, position}; }

    std::string_view m_text;
    const XMLLimits& m_limits;
    std::size_t m_at = 0;
    std::uint32_t m_depth = 0;
    bool m_encodingKnown = false;
    bool m_utf8 = false;
    XMLVerdict m_verdict;
};

XMLVerdict Scan::run()
{
    if (const auto nul = m_text.find('\0'); nul != npos)
        return {XMLFault::EmbeddedNul, nul};
    m_encodingKnown = m_utf8 = at(byteOrderMark);
    while (!failed() && (m_at = m_text.find('<', m_at)) != npos)
        markup();
    if (!failed() && m_utf8)
        checkCharacters();
    return m_verdict;
}

void Scan::markup()
{
    const auto next = m_at + 1 < m_text.size() ? m_text[m_at + 1] : '\0';
    if (startsName(next))
        startTag();
    else if (next == '/')
        endTag();
    else if (startsWithIgnoringCase(m_text.substr(m_at), "<?xml"))
        declaration();
    else if (at("<!--"))
        skipBehind("<!--", "-->");
    else if (at("<![CDATA["))
        skipBehind("<![CDATA[", "]]>");
    else
        skipBehind("<", ">");
}

void Scan::startTag()
{
    if (++m_depth > m_limits.depth)
        return fail(XMLFault::TooDeep, m_at);
    std::uint32_t attributes = 0;
    for (auto i = m_at + 1; i < m_text.size(); ++i) {
        const char c = m_text[i];
        if (!tagMarks[byteOf(c)])
            continue;
        if (c == '>') {
            m_depth -= m_text[i - 1] == '/';
            m_at = i + 1;
            return;
        }
        if (c == '=' && ++attributes > m_limits.attributes)
            return fail(XMLFault::TooManyAttributes, m_at);
        if (c == '"' || c == '\'')
            i = std::min(m_text.find(c, i + 1), m_text.size());
    }
    fail(XMLFault::CutOff, m_at);
}

void Scan::endTag()
{
    if (m_depth == 0)
        return fail(XMLFault::StrayEndTag, m_at);
    --m_depth;
    skipBehind("</", ">");
}

// All that begins with "<?xml" is a declaration to the parser, other processing instructions among it. It looks for the
// end outside of the values of three attributes.
void Scan::declaration()
{
    std::string_view encoding;
    for (auto i = m_at + 5; i < m_text.size();) {
        if (m_text[i] == '>') {
            noteEncoding(encoding);
            m_at = i + 1;
            return;
        }
        i = std::min(m_text.find_first_not_of(whiteSpace, i), m_text.size());
        const auto rest = m_text.substr(i);
        if (startsWithIgnoringCase(rest, "version") || startsWithIgnoringCase(rest, "encoding") ||
            startsWithIgnoringCase(rest, "standalone"))
            i = declarationValue(i, encoding);
        else if (!rest.empty() && rest[0] == byteOrderMark[0])
            i = npos; // whether the parser skips a byte order mark here depends on what it knows of the encoding
        else
            i = std::min(m_text.find_first_of(" \t\n\v\f\r>", i), m_text.size());
        if (i == npos)
            return fail(XMLFault::BadDeclaration, m_at);
    }
    fail(XMLFault::CutOff, m_at);
}

/// Reads one name and value of a declaration; gives the place behind it, or npos if it is not of the right form.
std::size_t Scan::declarationValue(std::size_t i, std::string_view& encoding)
{
    const auto isEncoding = lower(m_text[i]) == 'e';
    while (i < m_text.size() && continuesName(m_text[i]))
        ++i;
    i = m_text.find_first_not_of(whiteSpace, i);
    if (i == npos || m_text[i] != '=')
        return npos;
    i = m_text.find_first_not_of(whiteSpace, i + 1);
    if (i == npos || (m_text[i] != '"' && m_text[i] != '\''))
        return npos;
    const auto end = m_text.find(m_text[i], i + 1);
    const auto value = m_text.substr(i + 1, end - i - 1);
    const auto isPlain = [](char c) { return byteOf(c) < 0x80 && c != '<' && c != '>' && c != '&'; };
    if (end == npos || !std::all_of(value.begin(), value.end(), isPlain))
        return npos;
    if (isEncoding)
        encoding = value;
    return end + 1;
}

// The parser goes by the first declaration outside of all elements, and by the beginning of its encoding's name.
void Scan::noteEncoding(std::string_view encoding)
{
    if (m_encodingKnown || m_depth > 0)
        return;
    m_encodingKnown = true;
    m_utf8 = encoding.empty() || startsWithIgnoringCase(encoding, "utf-8") || startsWithIgnoringCase(encoding, "utf8");
}

void Scan::skipBehind(std::string_view start, std::string_view end)
{
    const auto found = m_text.find(end, m_at + start.size());
    if (found == npos)
        return fail(XMLFault::CutOff, m_at);
    m_at = found + end.size();
}

void Scan::checkCharacters()
{
    constexpr std::uint64_t highBits = 0x8080808080808080U;
    for (std::size_t i = 0; i < m_text.size();) {
        std::uint64_t word = highBits;
        if (m_text.size() - i >= sizeof word)
            std::memcpy(&word, m_text.data() + i, sizeof word);
        if ((word & highBits) == 0) {
            i += sizeof word;
            continue;
        }
        const auto length = sequenceLength(byteOf(m_text[i]));
        const auto rest = m_text.substr(i, length).substr(1);
        const auto continues = [](char c) { return (byteOf(c) & 0xC0) == 0x80; };
        if (rest.size() + 1 < length || !std::all_of(rest.begin(), rest.end(), continues))
            return fail(XMLFault::BrokenCharacter, i);
        i += length;
    }
}

} // namespace

XMLVerdict scanXMLText(std::string_view text, const XMLLimits& limits)
{
    return Scan(text, limits).run();
}

} // namespace HB::XML::CAD
