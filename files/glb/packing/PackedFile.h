#pragma once

#include <nlohmann/json.hpp>

#include <cstddef>
#include <vector>

namespace files::glb::packing
{

using Json = nlohmann::json;

/// The parts of a file that packing looks at and changes: lists of the document, and the bytes of the views.
struct PackedFile {
    Json nodes;
    Json meshes;
    Json accessors;
    Json bufferViews;
    std::vector<std::byte> binary;
};

} // namespace files::glb::packing
