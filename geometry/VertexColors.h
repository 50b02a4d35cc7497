#pragma once

#include "host/OSGSystem/Node.h"

namespace geometry
{

/// Takes the vertex colours away from all geometries at and below `root`.
void removeVertexColors(const osg::NodePtr& root);

} // namespace geometry
