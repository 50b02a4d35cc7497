#pragma once

#include "ptx/occt/DocumentWalker.h"

#include <cstddef>
#include <string>

namespace ptx::occt
{

/// Makes one part named `name` of all top-level parts that hold no solid, when there are several: a file of loose faces
/// names each face a part, and only faces of one part can be sewn together. Colours stay with their faces.
/// @return how many parts went into the new one
std::size_t mergeLooseFaces(DocumentContent& content, const std::string& name);

} // namespace ptx::occt
