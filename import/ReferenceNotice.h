#pragma once

#include "host/OSGSystem/Node.h"

/// Tells the host of finished trees that may hold references.
namespace znReferenceNotice
{

/// Who tells.
enum Code : int {
    PlmxmlTree = 6,    ///< a product structure became a tree
    PlmxmlImport = 9,  ///< the part files of a product structure are resolved
    OptimisedTree = 18 ///< a tree was cleaned and hung into the scene
};

/// Passes `root`, which may be null, to the host's interface; nothing happens in a host without one. The interface is
/// looked up once in the life of the process.
void send(const osg::NodePtr& root, Code code);

} // namespace znReferenceNotice
