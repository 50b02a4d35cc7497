#pragma once

#include "host/OSGSystem/Node.h"

namespace zn::kernel
{

/// A node with a square below the middle of what `root` shows, half as long again on each side as the longer side of
/// that. Null while there is nothing that a ground could lie under.
osg::NodePtr makeGroundBelow(const osg::NodePtr& root);

} // namespace zn::kernel
