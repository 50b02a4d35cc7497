#pragma once

#include "host/OSGSystem/Node.h"

#include <unordered_set>

namespace importer
{

/// The nodes of the tree at `root` whose names are only the numbers that a program gave to all nodes while it wrote
/// them ("o17", "Node_4"): letters that all of them share, and a number that is higher below than above. These must be
/// nine of ten nodes with a name, and most must stand below another of them: names of parts that count ("bolt7") stand
/// side by side. Empty for any other tree. The root, which bears the name of the file, is none.
std::unordered_set<const osg::Node*> numberedNodes(const osg::NodePtr& root);

} // namespace importer
