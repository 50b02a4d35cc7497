#pragma once

#include "geometry/GeometryNote.h"
#include "host/OSGSystem/Node.h"

#include <vector>

namespace geometry
{

/// Repairs the meshes of all geometries at and below `root`, see `repaired`. Sound ones are not touched.
/// @return a note for each geometry that was repaired
std::vector<GeometryNote> repairMeshes(const osg::NodePtr& root);

} // namespace geometry
