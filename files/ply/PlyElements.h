#pragma once

#include "files/ply/PlyHeader.h"
#include "files/ply/TextureParts.h"

namespace files::ply
{

/// What the elements of a file make: one part, or one for each picture that faces say they bear. Fails through `task`.
std::vector<TexturePart> readPlyElements(const PlyHeader& header, std::string_view file, ReadTask& task);

} // namespace files::ply
