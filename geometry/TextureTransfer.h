#pragma once

#include "scene/Mesh.h"

namespace geometry
{

/// Gives the corners of `made`, another mesh of the surface of `old`, the texture coordinates of the closest places on
/// the triangles of `old`, in each set that `old` has. A vertex that lies on a seam of one becomes one vertex for each
/// side, behind the others. Without texture coordinates or triangles in `old`, which keeps the promises of osg::Mesh,
/// `made` stays as it is.
void transferTexCoords(const osg::Mesh& old, osg::Mesh& made);

} // namespace geometry
