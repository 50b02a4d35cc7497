#pragma once

#include "geometry/WrongNormals.h"
#include "host/OSGSystem/Node.h"
#include "scene/Mesh.h"

namespace geometry
{

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
