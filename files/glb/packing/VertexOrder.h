#pragma once

#include "files/glb/packing/VertexStreams.h"

namespace files::glb::packing
{

/// Indices into the same vertices.
struct IndexList {
    bool areTriangles = false;
    std::vector<std::uint32_t> indices;
    /// How many indices each part has, one part after the other; empty for a single one. Triangles stay in their part.
    std::vector<std::size_t> parts = {};
};

/// Makes one vertex of those that are equal in all streams, and leaves out those that no index needs, when `options`
/// ask to weld; puts triangles and vertices in order when they ask to reorder. Else nothing changes.
void orderVertices(std::vector<VertexStream>& streams, std::vector<IndexList>& lists, const PackOptions& options);

} // namespace files::glb::packing
