#pragma once

#include "scene/Mesh.h"

#include <cstdint>
#include <vector>

namespace geometry
{

/// Appends a copy of each vertex that `vertices` names to `mesh`, in that order, with all that a vertex has.
void appendVertexCopies(osg::Mesh& mesh, const std::vector<std::uint32_t>& vertices);

} // namespace geometry
