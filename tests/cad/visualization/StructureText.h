#pragma once

#include "cad/visualization/CADProductStructure.h"

#include <string>

namespace HB::Visualization
{

/// The tree at `root`, one line a node: its name, the class of its core, and what the core holds. Cores that several
/// nodes share bear the same number. `folder` is left out of paths.
std::string treeText(const osg::NodePtr& root, const std::string& folder = {});

/// The table, one line a record: id, element, state, name and parent of its node, name of its material group, children.
std::string recordText(const CADProductStructure& structure);

/// Each simple material of the tree once, in tree order, with all its numbers.
std::string materialText(const osg::NodePtr& root);

} // namespace HB::Visualization
