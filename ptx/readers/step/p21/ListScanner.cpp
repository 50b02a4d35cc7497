#include "ptx/readers/step/p21/ListScanner.h"

#include "ptx/readers/step/p21/Lexis.h"

namespace ptx::step::p21
{

namespace
{
// What comes after reads nested lists by recursion.
constexpr std::size_t MaxDepth = 1000;
} // namespace

std::size_t ListScanner::fail(const char* cause)
{
    m_cause = cause;
    return Nowhere;
}

std::size_t ListScanner::failAtEnd()
{
    m_isAtEnd = true;
    return fail("the text ends in it");
}

std::size_t ListScanner::scan(std::size_t place, const Owner& owner)
{
    m_open.clear();
    m_pending.clear();
    m_isAtEnd = false;
    place = open(owner, place);
    while (place != Nowhere && !m_open.empty())
        place = value(place);
    return place;
}

// Returns where its first value begins, or what follows it when it is empty.
std::size_t ListScanner::open(const Owner& owner, std::size_t bracket)
{
    if (m_open.size() >= MaxDepth)
        return fail("its lists are nested too deeply");
    m_open.push_back({m_pending.size(), owner});
    const std::size_t first = afterBlanks(m_text, bracket + 1);
    return at(first) == ')' ? afterValue(first) : first;
}

void ListScanner::close()
{
    const auto [first, owner] = m_open.back();
    m_open.pop_back();
    const auto begin = m_pending.begin() + static_cast<std::ptrdiff_t>(first);
    Record record{};
    record.firstParameter = static_cast<std::uint32_t>(m_piece.parameters.size());
    record.parameterCount = static_cast<std::uint32_t>(m_pending.size() - first);
    record.number = owner.number;
    record.offset = owner.offset;
    record.type = typeNumber(owner.type);
    record.role = owner.role;
    m_piece.parameters.insert(m_piece.parameters.end(), begin, m_pending.end());
    m_pending.erase(begin, m_pending.end());
    m_piece.records.push_back(record);
    if (!m_open.empty())
        m_pending.emplace_back(Kind::List, m_piece.records.size() - 1);
}

// From behind a value: past the lists that end here, to where the next value begins.
std::size_t ListScanner::afterValue(std::size_t place)
{
    for (;;) {
        place = afterBlanks(m_text, place);
        if (place >= m_text.size())
            return failAtEnd();
        if (m_text[place] == ',')
            return afterBlanks(m_text, place + 1);
        if (m_text[place] != ')')
            return fail("a comma or a closing bracket is missing");
        close();
        ++place;
        if (m_open.empty())
            return place;
    }
}

// Passes a value and what follows it, or opens the list that begins here.
std::size_t ListScanner::value(std::size_t place)
{
    if (place >= m_text.size())
        return failAtEnd();
    const char first = m_text[place];
    if (first == '(' || first == '!' || (isWordLetter(first) && !isDigit(first)))
        return nestedList(place);
    const std::size_t end = plainValue(place);
    return end == Nowhere ? Nowhere : afterValue(end);
}

std::size_t ListScanner::plainValue(std::size_t place)
{
    switch (m_text[place]) {
    case '#':
        return reference(place);
    case '\'':
        return text(place);
    case '$':
        return keep(Kind::Omitted, place, place + 1);
    case '*':
        return keep(Kind::Derived, place, place + 1);
    case '"':
        return binary(place);
    case '.':
        return isDigit(at(place + 1)) ? number(place) : enumeration(place);
    default:
        return number(place);
    }
}

std::size_t ListScanner::nestedList(std::size_t place)
{
    const std::size_t end = afterWord(m_text, place + (m_text[place] == '!' ? 1 : 0));
    const std::size_t bracket = afterBlanks(m_text, end);
    if (bracket >= m_text.size())
        return failAtEnd();
    if (m_text[bracket] != '(')
        return fail("a word stands where a parameter should");
    Owner owner{};
    owner.type = m_text.substr(place, end - place);
    owner.offset = static_cast<std::uint32_t>(place);
    owner.role = Role::List;
    return open(owner, bracket);
}

std::size_t ListScanner::reference(std::size_t place)
{
    const std::optional<Name> name = nameAt(m_text, place);
    if (!name)
        return fail("a reference has no number that can be counted with");
    m_pending.emplace_back(Kind::Reference, name->number);
    return name->end;
}

std::size_t ListScanner::text(std::size_t place)
{
    const std::size_t end = afterString(m_text, place);
    return end == Nowhere ? fail("a string does not end") : keep(Kind::Text, place, end);
}

std::size_t ListScanner::number(std::size_t place)
{
    Kind kind = Kind::Integer;
    std::size_t end = place;
    std::size_t digits = 0;
    const auto passDigits = [&] {
        for (; isDigit(at(end)); ++end)
            ++digits;
    };
    if (at(end) == '-' || at(end) == '+')
        ++end;
    passDigits();
    if (at(end) == '.') {
        kind = Kind::Real;
        ++end;
        passDigits();
    }
    if (digits == 0)
        return fail("a parameter is missing or of no known kind");
    if (at(end) == 'E' || at(end) == 'e') {
        kind = Kind::Real;
        ++end;
        if (at(end) == '-' || at(end) == '+')
            ++end;
        digits = 0;
        passDigits();
        if (digits == 0)
            return fail("an exponent has no digits");
    }
    return keep(kind, place, end);
}

std::size_t ListScanner::enumeration(std::size_t place)
{
    const std::size_t end = afterWord(m_text, place + 1);
    if (end == place + 1 || at(end) != '.')
        return fail("a value of an enumeration does not end");
    return keep(Kind::Enumeration, place, end + 1);
}

std::size_t ListScanner::binary(std::size_t place)
{
    const std::size_t end = afterWord(m_text, place + 1);
    if (at(end) != '"')
        return fail("a binary value does not end");
    return keep(Kind::Binary, place, end + 1);
}

std::size_t ListScanner::keep(Kind kind, std::size_t place, std::size_t end)
{
    if (end - place > MaxTextLength)
        return fail("a parameter is too long");
    m_pending.emplace_back(kind, place, end - place);
    return end;
}

std::uint32_t ListScanner::typeNumber(std::string_view type)
{
    if (type.empty())
        return 0;
    if (type == m_lastType)
        return m_lastNumber;
    const auto [entry, isNew] = m_types.try_emplace(type, static_cast<std::uint32_t>(m_piece.types.size()));
    if (isNew)
        m_piece.types.push_back(type);
    m_lastType = type;
    m_lastNumber = entry->second;
    return m_lastNumber;
}

} // namespace ptx::step::p21
