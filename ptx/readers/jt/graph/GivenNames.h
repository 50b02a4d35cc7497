#pragma once

#include <string>
#include <string_view>

namespace ptx::jt::graph
{

/// The name that a person sees: "shaft.asm;55;0:" is "shaft".
std::string shownName(const std::string& name);

/// The key without the mark of keys that are meant for users.
std::string_view bareKey(std::string_view key);
/// Whether a key is meant for users.
bool isUserKey(std::string_view key);

/// Whether two texts are equal but for the case of ASCII letters.
bool isSameWord(std::string_view a, std::string_view b);

} // namespace ptx::jt::graph
