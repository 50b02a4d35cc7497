#pragma once

#include "files/gltf/packing/PackedDocument.h"

namespace files::gltf::packing
{

/// Unpacks the primitives that `KHR_draco_mesh_compression` has packed, equal ones once, and gives them accessors of
/// their own with plain data. What the packed bytes say about their size is compared with the accessors and held
/// against the limits before anything is unpacked. Fails the task with the place of the primitive.
void unpackDraco(PackedDocument& document);

} // namespace files::gltf::packing
