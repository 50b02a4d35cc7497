#pragma once

#include "importer/inventory/SceneQuery.h"

#include <cstddef>

namespace importer::inventory
{

/// Takes out of the tree below `root` what is neither a match nor above or below one. Nothing changes without a match.
/// @return how many nodes match
std::size_t keepMatches(const osg::NodePtr& root, const SceneQuery& query);

/// Makes each match below `root` inactive, so that nothing shows it.
/// @return how many nodes match
std::size_t hideMatches(const osg::NodePtr& root, const SceneQuery& query);

/// Makes active below `root` what is drawn beside parts to tell of them, which is not at first, in whole or but for
/// what a view shows. Below a node that is hidden it stays so.
/// @return how many there are
std::size_t showPmi(const osg::NodePtr& root);

} // namespace importer::inventory
