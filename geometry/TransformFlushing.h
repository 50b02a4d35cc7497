#pragma once

#include "geometry/BakedGeometry.h"

/// What `znOptimize` does with transforms; see there.
namespace geometry
{

void flushTransformations(const osg::NodePtr& root);

/// `baked` is what earlier calls did, and is added to.
void flushScalesAbove(const osg::NodePtr& geometryNode, BakedGeometry& baked);

} // namespace geometry
