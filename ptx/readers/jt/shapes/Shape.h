#pragma once

#include "ptx/readers/jt/codec/Vectors.h"
#include "ptx/readers/jt/container/Segments.h"
#include "ptx/readers/jt/shapes/DualMesh.h"

#include <algorithm>

namespace ptx::jt::shapes
{

/// What one shape segment draws, in units of the file. Lines are pairs of corners, a point is one.
struct Shape {
    std::vector<codec::Vector> positions;
    std::vector<codec::Vector> normals; ///< this and the next two by record; each may be empty
    std::vector<codec::Colour> colours;
    std::vector<codec::TextureCoordinate> textureCoordinates;
    std::vector<Triangle> triangles;
    std::vector<std::array<Corner, 2>> lines;
    std::vector<Corner> points;
    unsigned hashes = 0;           ///< that were compared
    const char* leftOut = nullptr; ///< what of it is not read, for a person; null: nothing
    container::Damage damage;      ///< what is damaged draws nothing

    /// How many records there may be.
    std::size_t records() const { return std::max({normals.size(), colours.size(), textureCoordinates.size()}); }
};

/// The bits of such words are shared out in a way that is not known.
inline constexpr const char* PackedColours = "colours of its vertices, which are packed into single words";

/// Reads a shape segment of a file of version `major`. Triangles with two equal corners are left out in version 8,
/// whose strips hold them for the sake of the next triangle.
Shape readShape(const container::Segment& segment, int major, bool isBigEndian);

} // namespace ptx::jt::shapes
