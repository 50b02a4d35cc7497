#pragma once

#include "files/glb/packing/PackedFile.h"

namespace files::glb::packing
{

/// Makes the primitives of `file` use one accessor of those that are equal in kind and content. Copies of parts, which
/// exporters like to write each for itself, are told once then.
void shareEqualArrays(PackedFile& file);

} // namespace files::glb::packing
