#pragma once

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
    friend auto operator<=>(const PositionGrid&, const PositionGrid&) = default;
};

/// The grid for a mesh with this box, whose vertices may move by `error`, or by 1/16384 of its longest side if that is
/// more. It has the origin of the mesh where 16 bits allow that.
PositionGrid gridFor(const Box& box, double error);

} // namespace files::glb::packing
