#pragma once

#include "files/glb/packing/PackOptions.h"
#include "files/glb/packing/PackedStreams.h"
#include "files/glb/packing/PositionGrid.h"

namespace files::glb::packing
{

/// One attribute of vertices in the form in which it is written.
struct VertexStream {
    std::string name; ///< such as "POSITION"
    std::size_t width = 0;
    PackedStreams::Filter filter = PackedStreams::Filter::None;
    Json accessor; ///< what it tells besides place and count
    std::vector<std::byte> bytes;

    std::size_t count() const { return bytes.size() / width; }
};

/// The attribute `name`, which `accessor` of `file` tells as floats, in the form that `options` ask for. Positions lie
/// on `grid`.
VertexStream streamOf(const std::string& name, const PackedFile& file, const Json& accessor, const PositionGrid& grid,
                      const PackOptions& options);

/// Tells the bounds of positions in their accessor, which has to have them.
void tellBounds(VertexStream& positions);

} // namespace files::glb::packing
