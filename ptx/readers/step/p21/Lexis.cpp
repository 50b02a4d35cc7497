#include "ptx/readers/step/p21/Lexis.h"

namespace ptx::step::p21
{

namespace
{

bool beginsStatement(std::string_view text, std::size_t at)
{
    while (at > 0 && isBlank(text[at - 1]) && text[at - 1] != '\n')
        --at;
    return at == 0 || text[at - 1] == '\n' || text[at - 1] == ';';
}

bool isNameWithEquals(std::string_view text, std::size_t at)
{
    std::size_t end = at + 1;
    while (end < text.size() && isDigit(text[end]))
        ++end;
    if (end == at + 1)
        return false;
    while (end < text.size() && isBlank(text[end]))
        ++end;
    return end < text.size() && text[end] == '=';
}

bool looksLikeStart(std::string_view text, std::size_t at)
{
    if (text[at] == '#' ? !isNameWithEquals(text, at) : !text.substr(at).starts_with("ENDSEC"))
        return false;
    return beginsStatement(text, at);
}

} // namespace

std::size_t afterComments(std::string_view text, std::size_t at)
{
    for (;;) {
        while (at < text.size() && isBlank(text[at]))
            ++at;
        if (!text.substr(at, 2).starts_with("/*"))
            return at;
        const std::size_t end = text.find("*/", at + 2);
        at = end == Nowhere ? text.size() : end + 2;
    }
}

std::size_t afterString(std::string_view text, std::size_t at)
{
    for (std::size_t end = text.find('\'', at + 1); end != Nowhere; end = text.find('\'', end + 2))
        if (end + 1 >= text.size() || text[end + 1] != '\'')
            return end + 1;
    return Nowhere;
}

std::size_t nextStart(std::string_view text, std::size_t from)
{
    for (std::size_t at = from; at < text.size(); ++at)
        if ((text[at] == '#' || text[at] == 'E') && looksLikeStart(text, at))
            return at;
    return text.size();
}

} // namespace ptx::step::p21
