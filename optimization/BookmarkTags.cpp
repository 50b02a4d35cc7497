#include "optimization/BookmarkTags.h"

#include <stdexcept>

namespace optimization
{

namespace BookmarkTags
{

namespace
{

bool contains(const std::string& tag, const char* mark)
{
    return tag.find(mark) != std::string::npos;
}

/// From behind the first "[" to `close`. An absent or earlier `close` makes the length wrap, so that the text runs to
/// the end.
std::string nameUpTo(const std::string& tag, std::size_t close)
{
    const std::size_t begin = tag.find('[') + 1;
    return tag.substr(begin, close - begin);
}

/// The text two places behind `close`; for an absent `close` the sum wraps to 1.
std::string textBehind(const std::string& tag, std::size_t close)
{
    if (close + 2 > tag.size())
        throw std::out_of_range("invalid string position");
    return tag.substr(close + 2);
}

} // namespace

std::optional<std::string> groupName(const std::string& tag)
{
    if (!contains(tag, "bookmark_group["))
        return std::nullopt;
    return nameUpTo(tag, tag.find(']'));
}

std::optional<MaterialSwitch> materialSwitch(const std::string& tag)
{
    if (!contains(tag, "switch_shader["))
        return std::nullopt;
    const std::size_t close = tag.find("]:");
    return MaterialSwitch{nameUpTo(tag, close), textBehind(tag, close)};
}

std::optional<Visibility> visibility(const std::string& tag)
{
    if (!contains(tag, "bookmark["))
        return std::nullopt;
    const std::size_t close = tag.find(']');
    return Visibility{nameUpTo(tag, close), textBehind(tag, close) == "visible"};
}

} // namespace BookmarkTags

} // namespace optimization
