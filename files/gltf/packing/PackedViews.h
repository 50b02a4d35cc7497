#pragma once

#include "files/gltf/packing/PackedDocument.h"

namespace files::gltf::packing
{

/// Unpacks the buffer views that `EXT_meshopt_compression` has packed, each into a buffer of its own, and lets them
/// point there. The sizes of all of them are held against the limits before the first one is unpacked. Fails the task
/// with the place of the buffer view when what it tells about its content does not go together, and when the packed
/// bytes are damaged.
void unpackViews(PackedDocument& document);

} // namespace files::gltf::packing
