#pragma once

#include "files/glb/packing/Affine.h"
#include "files/glb/packing/MeshPlaces.h"

#include <compare>
#include <cstdint>

namespace files::glb::packing
{

/// The grid that the positions of a mesh are rounded to: multiples of a step.
struct PositionGrid {
    double step = 0;                         ///< 0 leaves positions as they are
    std::array<std::int64_t, 3> origin = {}; ///< the steps that lie between the two origins
    bool isSigned = true;                    ///< whether the numbers on the grid are

    bool isOn() const { return step > 0; }
    /// How far a rounded vertex may be from where it was.
    double error() const;
    /// From the numbers on the grid into the space of the mesh.
    Affine toMesh() const;
    friend auto operator<=>(const PositionGrid&, const PositionGrid&) = default;
};

/// Whose size tells how coarse a grid may be.
enum class GridOf {
    Part,  ///< vertices may move by 1/16384 of the longest side of the mesh if that is more than the error
    Merged ///< parts of any size: by no more than the error, up to a mesh as large as `largestMerged`
};

/// The longest side that a mesh of merged parts may have in the scene, whatever way its own axes point there.
constexpr double largestMerged(double error)
{
    return error * 39000;
}

/// The grid for a mesh with this box, whose vertices may move by `error`. It has the origin of the mesh where 16 bits
/// allow that.
PositionGrid gridFor(const Box& box, double error, GridOf of = GridOf::Part);

} // namespace files::glb::packing
