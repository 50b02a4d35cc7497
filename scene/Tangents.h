#pragma once

#include "scene/Mesh.h"

#include <vector>

namespace osg
{

/// A direction on a surface, of length 1 and at right angles to the normal, along which u grows; and on which side of
/// it v grows upwards: `side` is 1 where normal x direction points there, -1 where the picture is mirrored.
struct Tangent {
    Vec3f direction = {1, 0, 0};
    float side = 1;
};

/// The tangents of the vertices of `mesh` for the texture coordinates `texCoords`, which are one of its sets: the sum
/// of those of the triangles at the vertex, each weighted with its area, less what points along the normal (E. Lengyel,
/// Foundations of Game Engine Development 2, 7.5). A vertex without normal or without area of texture around it has any
/// that is at right angles to its normal. Empty when the mesh has no normals.
std::vector<Tangent> tangentsOf(const Mesh& mesh, const Buffer<Vec2f>& texCoords);

} // namespace osg
