#pragma once

#include "files/ReadTask.h"

#include <nlohmann/json.hpp>

#include <functional>
#include <string_view>

namespace files::gltf
{

/// Whether a member is to become part of the tree. Members of the outermost object have the depth 1.
using MemberFilter = std::function<bool(int depth, std::string_view key)>;

/// The JSON text as a tree of the members that `isWanted` takes, in time that grows with the text. Fails the task with
/// the byte where the text is damaged, and where it is nested more than 64 deep: what reads the tree goes down by
/// recursion.
nlohmann::json parseJson(std::string_view text, ReadTask& task, const MemberFilter& isWanted);

} // namespace files::gltf
