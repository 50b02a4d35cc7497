#pragma once

#include "files/FileBytes.h"

namespace files::gltf
{

/// The two parts of a glTF file: its JSON text and the bytes that a binary file brings along.
struct GltfFrame {
    std::string_view json;
    std::string_view binary; ///< empty in a text file
};

/// Tells the parts of `file`, which they lie in. Fails through `task` when the frame of a binary file is damaged.
GltfFrame splitGltf(const FileBytes& file, const ReadTask& task);

} // namespace files::gltf
