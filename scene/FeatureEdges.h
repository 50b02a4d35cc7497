#pragma once

#include "scene/Mesh.h"

#include <cstdint>
#include <vector>

namespace osg
{

/// Where a mesh has an edge that people see as one: between two faces, at the rim of an open face, or, where the mesh
/// tells no faces, where its triangles meet at an angle.
struct FeatureEdge {
    /// Stands for no face: beyond a rim, and on meshes that tell none.
    static constexpr std::uint32_t noFace = 0xFFFFFFFF;

    std::uint32_t first = 0;      ///< the place of its first segment, from 0
    std::uint32_t count = 0;      ///< how many segments
    std::uint32_t face = noFace;  ///< the one of the lower index
    std::uint32_t other = noFace; ///< the other one
    /// Equal in all.
    friend bool operator==(const FeatureEdge&, const FeatureEdge&) = default;
};

/// All of a mesh.
struct FeatureEdges {
    std::vector<std::uint32_t> segments; ///< two vertices each
    std::vector<FeatureEdge> edges;      ///< which of them make one edge; they cover all segments in order
};

/// The edges of the triangles of `mesh`. Vertices at the same place are one. With faces (`Mesh::faces`) they are where
/// triangles of different faces meet, so that what lies within one face, the seam of a cylinder for example, is none;
/// without, where two triangles turn from each other by more than `creaseAngle` (radians). Where only one triangle is,
/// or more than two are, there is an edge in any case. What hangs together between the same two faces is one edge.
/// Triangles without area, and with vertices that are not finite or not there, are passed over. Time grows with the
/// triangles.
FeatureEdges featureEdges(const Mesh& mesh, double creaseAngle);

} // namespace osg
