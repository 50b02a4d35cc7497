#pragma once

#include "host/OSGSystem/Math.h"

#include <string>
#include <string_view>
#include <unordered_map>

namespace files::glb
{

/// `name` as a person wrote it: "oak crate" for "oak%20crate". What is no percent-encoded UTF-8 throughout, or would
/// have control characters, stays as it is.
std::string decodedName(std::string_view name);

/// A word for a display colour: "black", "white", "grey", "red", "orange", "brown", "yellow", "green", "turquoise",
/// "blue", "purple" or "pink".
std::string_view colorWord(const osg::Color3f& color);

/// The word and the code of a display colour, "blue #0000ff".
std::string colorName(const osg::Color3f& color);

/// Whether `name` begins with a code, "#0000ff" or "#0000ff 30%".
bool isColorCode(std::string_view name);

/// Makes names unique by a number behind them.
class UniqueNames
{
public:
    /// `name`, with " 2", " 3" and so on behind it where it was given before.
    std::string unique(const std::string& name);

private:
    std::unordered_map<std::string, unsigned> m_uses;
};

} // namespace files::glb
