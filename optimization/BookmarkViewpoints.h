#pragma once

#include "host/OSGSystem/Node.h"

class znVariantSet;

namespace optimization
{

/// Makes a viewpoint of `set` from each camera directly below `bookmarkNode`, which leaves the pool as it was imported.
/// A viewpoint of the same name that is there already wins.
void initViewPoints(osg::NodePtr& bookmarkNode, znVariantSet* set);

} // namespace optimization
