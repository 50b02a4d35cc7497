#pragma once

#include "scene/Mesh.h"

#include <cstddef>

namespace geometry
{

/// A mesh without primitives, and what was lost on the way.
struct Triangulated {
    osg::Mesh mesh;
    std::size_t leftOut = 0; ///< primitives that name corners or vertices which are not there
};

/// `mesh` with triangles in place of its primitives, behind those that it has. Where it has faces they become one more.
Triangulated triangulated(const osg::Mesh& mesh);

/// `mesh` without the triangles that have no area; faces follow.
osg::Mesh withoutFlatTriangles(const osg::Mesh& mesh);

} // namespace geometry
