#pragma once

#include "host/OSGSystem/Node.h"
#include "scene/Mesh.h"

#include <cstddef>

namespace geometry
{

/// Triangles whose corners are lit as if they faced elsewhere. Triangles without area and meshes without normals count
/// as right.
struct WrongNormals {
    std::size_t offPlane = 0; ///< a normal is more than 60 degrees off the plane, the inverted ones among them
    std::size_t inverted = 0; ///< all normals are on its back
    /// The same counts.
    friend bool operator==(const WrongNormals&, const WrongNormals&) = default;
};

/// Those of `mesh`.
WrongNormals wrongNormals(const osg::Mesh& mesh);

/// `mesh` without any. A triangle whose normals agree with each other on its back is turned round; else each corner
/// whose normal is off gets a vertex of its own, with the normal of the plane. The order of the triangles stays.
osg::Mesh withRightNormals(const osg::Mesh& mesh);

/// Those of the geometries at and below `root`, each counted once.
WrongNormals wrongNormals(const osg::NodePtr& root);

/// Gives the geometries at and below `root` that have some a mesh without any. Such a mesh loses its exact surface,
/// which would bring them back. @return what there were
WrongNormals repairNormals(const osg::NodePtr& root);

} // namespace geometry
