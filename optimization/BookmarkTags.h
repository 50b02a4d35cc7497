#pragma once

#include <optional>
#include <string>

namespace optimization
{

/// The grammar of the tags by which a converted model tells its bookmarks. Each function takes a whole tag and gives
/// nothing when the tag is of another kind. The marks are matched with their case, anywhere in the tag; names run from
/// the first "[" of the tag.
namespace BookmarkTags
{

/// The tag of a node that stands for a bookmark.
inline constexpr const char* BookmarkNode = "stylar::bookmark";
/// The mark of a node whose visibility bookmarks choose.
inline constexpr const char* VariesByBookmark = "stylar::bookmark_visibilities";

/// `bookmark_group[NAME]`: the name, up to the first "]", or to the end when there is none.
std::optional<std::string> groupName(const std::string& tag);

/// What `switch_shader[MATERIAL]:STATE` tells.
struct MaterialSwitch {
    std::string material; ///< up to the first "]:", or to the end when there is none
    std::string state;    ///< behind that "]:"; without one the tag but for its first character
    /// Equal texts.
    friend bool operator==(const MaterialSwitch&, const MaterialSwitch&) = default;
};
/// `switch_shader[MATERIAL]:STATE`, taken apart.
std::optional<MaterialSwitch> materialSwitch(const std::string& tag);

/// What `bookmark[SET]cVALUE` tells, whatever the character c is.
struct Visibility {
    std::string set; ///< up to the first "]", or to the end when there is none
    /// Whether the node is to be seen with that set.
    bool visible = false;
    /// The same set and the same value.
    friend bool operator==(const Visibility&, const Visibility&) = default;
};
/// A tag that ends with its first "]" has no value: `std::out_of_range` with the text "invalid string position".
std::optional<Visibility> visibility(const std::string& tag);

} // namespace BookmarkTags

} // namespace optimization
