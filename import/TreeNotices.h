#pragma once

#include "host/OSGSystem/Node.h"

/// The library's own frame: what its jobs have in common.
namespace frame
{

/// What became of a tree that may hold references. The host knows who tells by these numbers.
enum class TreeNotice : int {
    PlmxmlTree = 6,    ///< a product structure became a tree
    PlmxmlImport = 9,  ///< the part files of a product structure are resolved
    OptimisedTree = 18 ///< a tree was cleaned and hung into the scene
};

/// Tells the host's interface for references of `root`, which may be null; nothing happens in a host without one. The
/// interface is looked up once in the life of the process.
void notifyReferences(const osg::NodePtr& root, TreeNotice notice);

} // namespace frame
