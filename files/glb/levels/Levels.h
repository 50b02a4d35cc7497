#pragma once

#include "files/glb/levels/LevelOptions.h"
#include "files/glb/packing/PackedFile.h"

#include <cstdint>

/// Makes triangles of a file that is about to be written fewer, in its own meshes and in levels of detail.
namespace files::glb::levels
{

/// What all meshes of a level come to.
struct LevelNumbers {
    std::uint64_t triangles = 0; ///< a shared mesh counted once
    double error = 0;            ///< the largest distance from the surfaces before, in millimetres of the scene
};

/// What was made.
struct Levels {
    std::uint64_t trianglesBefore = 0;
    std::vector<LevelNumbers> numbers; ///< by level, the finest one first; empty when nothing was asked for
    /// How many lower levels of meshes there are not, as they would have more than nine tenths of the triangles of the
    /// level before, which takes their place.
    std::uint64_t leftOut = 0;
    bool hasNodes = false; ///< nodes of the file have `MSFT_lod`
    /// The meshes of the file of each lower level, when levels are files.
    std::vector<packing::Json> meshes;
};

/// Gives the meshes of `file` fewer triangles, and lower levels, as `options` ask. A unit of the file has
/// `millimetres`. `file` is as `packing::pack` wants it, and is so again; indices and vertices that nothing needs are
/// left in it. Lines and points stay as they are in each level, but edges of faces (`extras.edges`) are in the finest
/// alone. Throws `files::Failure` and `std::bad_alloc`.
Levels makeLevels(packing::PackedFile& file, const LevelOptions& options, double millimetres);

} // namespace files::glb::levels
