#pragma once

#include "scene/Mesh.h"

namespace geometry
{

/// `mesh` with texture coordinates of a box around it, in its first set: a picture lies once on each metre of its own
/// space. A triangle is projected along the axis that its plane faces most; within 0.01 % of a tie that is X before Y
/// before Z. Seen from outside, (u, v) run along
///
///   +X: y, z      -X: -y, z      +Y: -x, z      -Y: x, z      +Z: x, y      -Z: x, -y
///
/// so that no side is mirrored, v goes up along Z on those around, and u along X on top and bottom. A vertex between
/// triangles of different sides becomes one for each, behind the others. Triangles without area follow what is around,
/// and vertices of no triangle count as seen from above; places that are no numbers are at (0, 0). Without triangles it
/// stays as it is. The order of triangles, and what else the mesh has, stay.
osg::Mesh withBoxCoordinates(const osg::Mesh& mesh);

} // namespace geometry
