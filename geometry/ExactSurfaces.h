#pragma once

#include "host/OSGSystem/Node.h"

namespace geometry
{

/// Drops the exact surfaces of all geometries at and below `root`; the meshes stay.
void removeExactSurfaces(const osg::NodePtr& root);

} // namespace geometry
