#pragma once

#include "scene/Mesh.h"

#include <cstddef>
#include <memory>

namespace ptx::model
{

/// About how many triangles `splitEdges` would make of `mesh`.
double splitEstimate(const osg::Mesh& mesh, float longest);

/// `mesh` with every edge longer than `longest` halved until none is. Whether an edge is split depends on its end
/// points alone, and new vertices lie on the edge: triangles that met before meet afterwards, also across faces.
std::shared_ptr<const osg::Mesh> splitEdges(const osg::Mesh& mesh, float longest);

} // namespace ptx::model
