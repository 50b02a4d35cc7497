#pragma once

#include <nlohmann/json.hpp>

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace files::glb::packing
{

using Json = nlohmann::json;

/// The parts of a file that packing looks at and changes: lists of the document, and the bytes of the views.
struct PackedFile {
    Json scene; ///< the entry of the list of scenes
    Json nodes;
    Json meshes;
    Json materials;
    Json accessors;
    Json bufferViews;
    std::vector<std::byte> binary;
};

/// A member of an accessor of colours of which bytes would be too coarse. It does not come into the file.
inline constexpr const char* isFine = "isFine";

/// The component type of short indices.
inline constexpr int unsignedShort = 5123;

/// The elements of `accessor` in `file`, which are close together.
const std::byte* elementsOf(const PackedFile& file, const Json& accessor);

/// How many numbers an element of `accessor`, a vector, has.
std::size_t componentsOf(const Json& accessor);

/// The numbers of `accessor`, whose elements are vectors of floats.
std::vector<float> floatsOf(const PackedFile& file, const Json& accessor);

/// The numbers of `accessor`, whose elements are indices of two or four bytes.
std::vector<std::uint32_t> indicesOf(const PackedFile& file, const Json& accessor);

/// Adds an accessor of vectors such as "VEC3" with a view of its own. Returns its number.
std::size_t addFloats(PackedFile& file, std::span<const float> values, const char* type);

/// Adds an accessor of indices of four bytes with a view of its own. Returns its number.
std::size_t addIndices(PackedFile& file, std::span<const std::uint32_t> indices);

} // namespace files::glb::packing
