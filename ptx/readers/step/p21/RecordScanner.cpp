#include "ptx/readers/step/p21/RecordScanner.h"

#include "ptx/readers/step/p21/Lexis.h"

#include <algorithm>

namespace ptx::step::p21
{

namespace
{

constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";

/// Whether `word` begins with `capitals`, whatever the case of its letters.
bool beginsLike(std::string_view word, std::string_view capitals)
{
    const auto isSame = [](char a, char b) { return a == b || (a >= 'a' && a <= 'z' && a - 'a' + 'A' == b); };
    return word.size() >= capitals.size() &&
           std::equal(capitals.begin(), capitals.end(), word.begin(), [&](char b, char a) { return isSame(a, b); });
}

bool isLike(std::string_view word, std::string_view capitals)
{
    return word.size() == capitals.size() && beginsLike(word, capitals);
}

bool isOtherSection(std::string_view word)
{
    return isLike(word, "ANCHOR") || isLike(word, "REFERENCE") || isLike(word, "SIGNATURE");
}

} // namespace

RecordScanner::RecordScanner(std::string_view text, const Place& from, Piece& piece)
    : m_piece(piece), m_lists(text.substr(static_cast<std::size_t>(from.at)), piece), m_section(from.section),
      m_scopes(from.scopes)
{
    piece.text = text.substr(static_cast<std::size_t>(from.at));
    piece.begin = from.at;
    m_text = piece.text;
    if (from.at == 0 && m_text.starts_with(ByteOrderMark))
        m_at = ByteOrderMark.size();
}

Place RecordScanner::scanTo(std::uint64_t stop)
{
    while (!isAtEnd() && m_piece.begin + m_at < stop)
        step();
    return place();
}

Place RecordScanner::scanToData()
{
    m_isBeforeData = true;
    while (!isAtEnd() && m_section != Section::Data)
        step();
    return place();
}

bool RecordScanner::isAtEnd()
{
    m_at = afterBlanks(m_text, m_at);
    if (m_at >= m_text.size())
        m_section = Section::Ended;
    return m_section == Section::Ended;
}

void RecordScanner::step()
{
    switch (m_section) {
    case Section::Outside:
        return stepOutside();
    case Section::Header:
        return stepHeader();
    case Section::Data:
        return stepData();
    case Section::Other:
        return stepOther();
    case Section::Ended:
        return;
    }
}

void RecordScanner::stepOutside()
{
    const std::string_view here = word();
    if (beginsLike(here, "END-ISO")) {
        m_sawEnd = true;
        m_section = Section::Ended;
    } else if (isLike(here, "HEADER") && m_isBeforeData) {
        beginSection(Section::Header);
    } else if (isLike(here, "DATA")) {
        beginSection(Section::Data);
    } else if (isOtherSection(here)) {
        beginSection(Section::Other);
    } else if (m_text[m_at] == '#') {
        damage(m_at, 0, "a record stands outside of the sections");
        m_section = Section::Data;
    } else {
        if (!beginsLike(here, "ISO-10303-21"))
            damage(m_at, 0, "something else stands where a section should begin");
        passStatement();
    }
}

void RecordScanner::stepHeader()
{
    const std::string_view here = word();
    if (isLike(here, "ENDSEC"))
        beginSection(Section::Outside);
    else if (isLike(here, "DATA"))
        loseSectionEnd();
    else
        readHeaderEntity();
}

void RecordScanner::stepData()
{
    if (m_text[m_at] == '#')
        return readEntity();
    const std::string_view here = word();
    if (isLike(here, "ENDSEC"))
        return endData();
    if (beginsLike(here, "END-ISO"))
        return loseSectionEnd();
    if (isLike(here, "ENDSCOPE") && !m_scopes.empty())
        return endScope();
    damage(m_at, 0, "something else stands where a record should begin");
    m_at = nextStart(m_text, m_at + 1);
}

void RecordScanner::endData()
{
    for (const std::uint32_t number : m_scopes)
        damage(m_at, number, "its scope does not end");
    m_scopes.clear();
    beginSection(Section::Outside);
}

// What these hold is about other files and about signatures.
void RecordScanner::stepOther()
{
    if (isLike(word(), "ENDSEC"))
        m_section = Section::Outside;
    passStatement();
}

void RecordScanner::readHeaderEntity()
{
    const std::size_t begin = m_at;
    const std::size_t records = m_piece.records.size();
    const std::size_t parameters = m_piece.parameters.size();
    m_isCut = false;
    const std::size_t end = typedList(begin, {{}, 0, static_cast<std::uint32_t>(begin), Role::Header});
    const std::size_t after = end == Nowhere ? Nowhere : statementEnd(end);
    if (after != Nowhere) {
        m_at = after;
        return;
    }
    takeBack(records, parameters);
    damage(begin, 0, m_cause);
    // Its quotes may be what is wrong, so that they are not looked at.
    const std::size_t semicolon = m_text.find(';', begin);
    m_at = m_isCut || semicolon == Nowhere ? m_text.size() : semicolon + 1;
}

void RecordScanner::readEntity()
{
    const std::size_t begin = m_at;
    const std::optional<Name> name = nameAt(m_text, begin);
    if (!name) {
        damage(begin, 0, "it has no number that can be counted with");
        m_at = nextStart(m_text, begin + 1);
        return;
    }
    const std::size_t equals = afterBlanks(m_text, name->end);
    if (equals >= m_text.size() || m_text[equals] != '=') {
        damage(begin, name->number, "a sign of equality is missing");
        m_at = nextStart(m_text, begin + 1);
        return;
    }
    const std::size_t body = afterBlanks(m_text, equals + 1);
    if (!openScope(body, name->number))
        readBody(begin, body, name->number);
}

// "#1=&SCOPE #2=...; ENDSCOPE /#2/ TYPE(...);": what is in the scope of #1 becomes a record as any other.
bool RecordScanner::openScope(std::size_t at, std::uint32_t number)
{
    constexpr std::string_view Word = "&SCOPE";
    if (!beginsLike(m_text.substr(std::min(at, m_text.size())), Word))
        return false;
    m_scopes.push_back(number);
    m_at = at + Word.size();
    return true;
}

void RecordScanner::endScope()
{
    const std::size_t begin = m_at;
    const std::uint32_t number = m_scopes.back();
    m_scopes.pop_back();
    readBody(begin, afterExports(afterWord(m_text, begin)), number);
}

std::size_t RecordScanner::afterExports(std::size_t at) const
{
    at = afterBlanks(m_text, at);
    if (at >= m_text.size() || m_text[at] != '/')
        return at;
    const std::size_t end = m_text.find_first_not_of("#0123456789, \t\r\n", at + 1);
    return end != Nowhere && m_text[end] == '/' ? afterBlanks(m_text, end + 1) : at;
}

// Goes on behind the record, or with the next one when it cannot be read.
void RecordScanner::readBody(std::size_t begin, std::size_t at, std::uint32_t number)
{
    const std::size_t records = m_piece.records.size();
    const std::size_t parameters = m_piece.parameters.size();
    m_isCut = false;
    const std::size_t end = entityBody(at, {{}, number, static_cast<std::uint32_t>(begin), Role::Entity});
    const std::size_t after = end == Nowhere ? Nowhere : statementEnd(end);
    if (after != Nowhere) {
        m_at = after;
        return;
    }
    takeBack(records, parameters);
    damage(begin, number, m_cause);
    m_at = m_isCut ? m_text.size() : nextStart(m_text, begin + 1);
}

void RecordScanner::takeBack(std::size_t records, std::size_t parameters)
{
    m_piece.records.resize(records);
    m_piece.parameters.erase(m_piece.parameters.begin() + static_cast<std::ptrdiff_t>(parameters),
                             m_piece.parameters.end());
}

std::size_t RecordScanner::entityBody(std::size_t at, const ListScanner::Owner& owner)
{
    return at < m_text.size() && m_text[at] == '(' ? complexBody(at, owner) : typedList(at, owner);
}

std::size_t RecordScanner::complexBody(std::size_t at, const ListScanner::Owner& owner)
{
    at = typedList(afterBlanks(m_text, at + 1), owner);
    while (at != Nowhere) {
        at = afterBlanks(m_text, at);
        if (at < m_text.size() && m_text[at] == ')')
            return at + 1;
        at = typedList(at, {{}, 0, static_cast<std::uint32_t>(at), Role::Member});
    }
    return Nowhere;
}

std::size_t RecordScanner::typedList(std::size_t at, ListScanner::Owner owner)
{
    const bool isOwn = at < m_text.size() && m_text[at] == '!';
    const std::size_t end = afterWord(m_text, at + (isOwn ? 1 : 0));
    if (end == at)
        return fail("a type is missing");
    owner.type = m_text.substr(at, end - at);
    const std::size_t bracket = afterBlanks(m_text, end);
    if (bracket >= m_text.size() || m_text[bracket] != '(')
        return fail("its parameters are missing");
    const std::size_t after = m_lists.scan(bracket, owner);
    if (after == Nowhere) {
        m_isCut = m_lists.isAtEnd();
        m_cause = m_lists.cause();
    }
    return after;
}

std::size_t RecordScanner::statementEnd(std::size_t at)
{
    at = afterBlanks(m_text, at);
    return at < m_text.size() && m_text[at] == ';' ? at + 1 : fail("a semicolon is missing");
}

std::size_t RecordScanner::fail(const char* cause)
{
    m_cause = cause;
    return Nowhere;
}

// The word here, with the signs that the names of the standard have in them.
std::string_view RecordScanner::word() const
{
    std::size_t end = m_at;
    while (end < m_text.size() && (isWordLetter(m_text[end]) || m_text[end] == '-'))
        ++end;
    return m_text.substr(m_at, end - m_at);
}

void RecordScanner::beginSection(Section section)
{
    passStatement();
    m_section = section;
}

void RecordScanner::passStatement()
{
    while (m_at < m_text.size() && m_text[m_at] != ';') {
        const std::size_t end = m_text[m_at] == '\'' ? afterString(m_text, m_at) : m_at + 1;
        m_at = end == Nowhere ? m_text.size() : afterBlanks(m_text, end);
    }
    m_at = std::min(m_at + 1, m_text.size());
}

void RecordScanner::damage(std::size_t at, std::uint32_t number, const char* cause)
{
    m_piece.damages.push_back({m_piece.begin + at, number, cause});
}

// The word that comes is read again, as one between sections.
void RecordScanner::loseSectionEnd()
{
    damage(m_at, 0, "the section does not end");
    m_section = Section::Outside;
}

} // namespace ptx::step::p21
