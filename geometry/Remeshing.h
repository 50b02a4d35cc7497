#pragma once

#include "scene/Mesh.h"

namespace geometry
{

/// The triangles of `made` in place of those of `old`, with the exact surface, lines, points and texture coordinates of
/// `old`. Other values of vertices that only `old` has are left out.
osg::Mesh remeshed(const osg::Mesh& old, const osg::Mesh& made);

} // namespace geometry
