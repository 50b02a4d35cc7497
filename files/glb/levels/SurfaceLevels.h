#pragma once

#include "files/glb/packing/PackedFile.h"
#include "geometry/rays/RayDevice.h"

#include <cstdint>
#include <vector>

namespace files::glb::levels
{

/// The triangles of a primitive in one level.
struct Detail {
    std::size_t indices = 0; ///< their accessor
    std::uint64_t triangles = 0;
    double error = 0; ///< how far they are from those of the primitive, measured in the space of the mesh
    std::vector<std::uint64_t> parts = {}; ///< how many of them each part of a merged primitive has; empty for others

    bool operator==(const Detail&) const = default;
};

/// What is wanted of a primitive.
struct Wish {
    double error = 0;           ///< how far its own triangles may be from what they were; 0 leaves them
    std::vector<double> shares; ///< of these triangles, by lower level
};

/// The triangles of `primitive` in each level, its own first, which are fewer than before when `wish` allows that. A
/// level that cannot have fewer than the one before is that one. The parts of merged primitives (`extras.parts`) are
/// surfaces of their own. New indices are added to `file`. Throws
/// `files::Failure` when nothing can be measured.
std::vector<Detail> detailsOf(packing::PackedFile& file, const packing::Json& primitive, const Wish& wish,
                              const geometry::rays::RayDevice& device);

} // namespace files::glb::levels
