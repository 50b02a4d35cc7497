#pragma once

#include "files/glb/packing/PackedFile.h"

#include <Eigen/Core>

#include <cstdint>
#include <vector>

namespace files::glb::levels
{

/// Threes of numbers of vertices.
using Triangles = std::vector<std::uint32_t>;

/// The triangles of a primitive, over the vertices that they have: those that are equal in everything are one.
struct Surface {
    std::vector<Eigen::Vector3f> positions;
    std::vector<std::uint32_t> vertices; ///< of each, its number in the file
    Triangles triangles;                 ///< none of them has a corner twice

    /// The same triangles by the numbers of the file.
    Triangles inFile(const Triangles& local) const;
};

Surface surfaceOf(const packing::PackedFile& file, const packing::Json& primitive);

/// The longest side of the box of the positions.
double sizeOf(const Surface& surface);

/// Triangles out of `triangles` of `surface`, down to `most` where that is possible and the surface moves by about
/// `error` at most. Open borders stay, and a closed surface stays closed. None of the positions moves.
Triangles reduced(const Surface& surface, const Triangles& triangles, std::size_t most, double error);

} // namespace files::glb::levels
