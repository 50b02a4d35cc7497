#pragma once

#include "tests/house/SourceTree.h"

namespace house
{

/// What the build says otherwise than the tree: a source that the build list (CMakeLists.txt) of another folder
/// compiles, and a source of the product that the list of its own folder does not name.
std::vector<Finding> strayBuildEntries(const std::filesystem::path& root, const std::vector<SourceFile>& files);

} // namespace house
