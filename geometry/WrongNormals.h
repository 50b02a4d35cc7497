#pragma once

#include <cstddef>

namespace geometry
{

/// Triangles whose corners are lit as if they faced elsewhere. Triangles without area and meshes without normals count
/// as right.
struct WrongNormals {
    std::size_t offPlane = 0; ///< a normal is more than 60 degrees off the plane, the inverted ones among them
    std::size_t inverted = 0; ///< all normals are on its back
    /// The same counts.
    friend bool operator==(const WrongNormals&, const WrongNormals&) = default;
};

} // namespace geometry
