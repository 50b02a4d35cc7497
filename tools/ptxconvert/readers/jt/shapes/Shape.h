#pragma once

#include "tools/ptxconvert/readers/jt/codec/Vectors.h"
#include "tools/ptxconvert/readers/jt/container/Segments.h"
#include "tools/ptxconvert/readers/jt/shapes/DualMesh.h"

#include <algorithm>

namespace ptx::jt
{

/// What one shape segment draws, in units of the file. Lines are pairs of corners, a point is one.
struct Shape {
    std::vector<Vector> positions;
    std::vector<Vector> normals; ///< this and the next two by record; each may be empty
    std::vector<Colour> colours;
    std::vector<TextureCoordinate> textureCoordinates;
    std::vector<Triangle> triangles;
    std::vector<std::array<Corner, 2>> lines;
    std::vector<Corner> points;
    unsigned hashes = 0;           ///< that were compared
    const char* leftOut = nullptr; ///< what of it is not read, for a person; null: nothing
    Damage damage;                 ///< what is damaged draws nothing

    /// How many records there may be.
    std::size_t records() const { return std::max({normals.size(), colours.size(), textureCoordinates.size()}); }
};

/// Reads a shape segment of a file of version `major`. Triangles with two equal corners are left out in version 8,
/// whose strips hold them for the sake of the next triangle.
Shape readShape(const Segment& segment, int major, bool isBigEndian);

} // namespace ptx::jt
