#pragma once

#include "host/OSGSystem/Node.h"

/// What `znOptimize` does with groups; see there.
namespace geometry
{

void cleanupGroupNodes(const osg::NodePtr& root);
void removeEmptyGroups(const osg::NodePtr& root, bool keepNamed);

} // namespace geometry
