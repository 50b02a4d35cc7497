#pragma once

#include "host/OSGSystem/Node.h"
#include "host/znKernelServices/zndPtxSettings.h"

namespace optimization
{

/// Flushes the scales of the geometries at and below `root` into their vertices. Nothing below a geometry is visited.
void flushGeometryScales(const osg::NodePtr& root);

/// Merges the geometries of the tree at `root` and meshes their exact surfaces anew, as `settings` says.
void mergeGeometries(const osg::NodePtr& root, const zndPtxSettings& settings);

} // namespace optimization
