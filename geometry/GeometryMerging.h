#pragma once

#include "host/OSGSystem/Node.h"

namespace geometry
{

/// What `znOptimize::mergeGeometry` does; see there.
void mergeGeometry(const osg::NodePtr& root);

} // namespace geometry
