#pragma once

#include "geometry/GeometryNote.h"
#include "host/OSGSystem/Node.h"

#include <vector>

namespace geometry
{

/// Makes triangles of the primitives of all geometries at and below `root`. Geometries that have none are not touched.
/// @param dropFlat triangles without area are taken away as well
/// @return a note for each geometry that lost primitives which name vertices that are not there
std::vector<GeometryNote> triangulate(const osg::NodePtr& root, bool dropFlat);

} // namespace geometry
