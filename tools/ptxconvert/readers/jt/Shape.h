#pragma once

#include "tools/ptxconvert/readers/jt/DualMesh.h"
#include "tools/ptxconvert/readers/jt/Segments.h"

namespace ptx::jt
{

using Vector = std::array<float, 3>;

/// The mesh of one shape segment, in units of the file.
struct Shape {
    std::vector<Vector> positions;
    std::vector<Vector> normals; ///< by record; may be empty
    std::vector<Triangle> triangles;
    unsigned hashes = 0; ///< that were compared
    Damage damage;
};

/// Reads a shape segment of a file of version `major`. Triangles with two equal corners are left out in version 8,
/// whose strips hold them for the sake of the next triangle.
Shape readShape(const Segment& segment, int major, bool isBigEndian);

/// The direction that sextant, octant and two angles of `bits` bits each stand for.
Vector directionOf(std::uint32_t sextant, std::uint32_t octant, std::uint32_t theta, std::uint32_t psi, unsigned bits);

} // namespace ptx::jt
