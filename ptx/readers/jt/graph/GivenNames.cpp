#include "ptx/readers/jt/graph/GivenNames.h"

#include <algorithm>

namespace ptx::jt::graph
{

namespace
{

constexpr std::string_view UserMark = "::";

// Takes ";number" and what follows it off; false if there is none.
bool cutNumber(std::string_view& name)
{
    const std::size_t mark = name.rfind(';');
    if (mark == std::string_view::npos)
        return false;
    std::string_view digits = name.substr(mark + 1);
    if (digits.starts_with('-'))
        digits.remove_prefix(1);
    if (digits.empty() || !std::all_of(digits.begin(), digits.end(), [](char c) { return c >= '0' && c <= '9'; }))
        return false;
    name = name.substr(0, mark);
    return true;
}

char lower(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

} // namespace

std::string shownName(const std::string& name)
{
    std::string_view shown = name;
    if (shown.ends_with(':')) {
        shown.remove_suffix(1);
        const bool hasFirst = cutNumber(shown);
        if (!hasFirst || !cutNumber(shown))
            shown = name;
    }
    for (const std::string_view ending : {".part", ".asm"})
        if (shown.size() > ending.size() && isSameWord(shown.substr(shown.size() - ending.size()), ending))
            return std::string(shown.substr(0, shown.size() - ending.size()));
    return std::string(shown);
}

std::string_view bareKey(std::string_view key)
{
    return isUserKey(key) ? key.substr(0, key.size() - UserMark.size()) : key;
}

bool isUserKey(std::string_view key)
{
    return key.ends_with(UserMark);
}

bool isSameWord(std::string_view a, std::string_view b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) { return lower(x) == lower(y); });
}

} // namespace ptx::jt::graph
