#pragma once

#include "files/ReadTask.h"

namespace files::obj
{

/// Wavefront OBJ with its material libraries.
///
/// Below the root stands one node for each object of a name, below it one for each group of a name, and geometries
/// below these, one for each material; a level without a name is left out. Objects of one name are one. Polygons
/// become triangles, poly-lines segments; points stay. Vertex colours stay. Pictures of materials stay where there is
/// a slot for them. Smoothing groups, and free-form curves and surfaces are left out; a missing library or material is
/// a warning.
osg::NodePtr readObj(ReadTask& task);

} // namespace files::obj
