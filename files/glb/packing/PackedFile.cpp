#include "files/glb/packing/PackedFile.h"

#include <cstring>

namespace files::glb::packing
{

namespace
{

enum Type { UnsignedInt = 5125, Float };

/// The accessor of `count` elements in a view of its own with these bytes.
std::size_t addAccessor(PackedFile& file, std::span<const std::byte> bytes, std::size_t count, Json accessor)
{
    accessor["bufferView"] = file.bufferViews.size();
    accessor["count"] = count;
    file.bufferViews.push_back({{"buffer", 0}, {"byteOffset", file.binary.size()}, {"byteLength", bytes.size()}});
    file.binary.insert(file.binary.end(), bytes.begin(), bytes.end());
    file.accessors.push_back(std::move(accessor));
    return file.accessors.size() - 1;
}

} // namespace

const std::byte* elementsOf(const PackedFile& file, const Json& accessor)
{
    const Json& view = file.bufferViews.at(accessor.at("bufferView").get<std::size_t>());
    return file.binary.data() + view.value("byteOffset", std::size_t(0)) + accessor.value("byteOffset", std::size_t(0));
}

std::size_t componentsOf(const Json& accessor)
{
    return static_cast<std::size_t>(accessor.at("type").get_ref<const std::string&>().back() - '0');
}

std::vector<float> floatsOf(const PackedFile& file, const Json& accessor)
{
    std::vector<float> values(accessor.at("count").get<std::size_t>() * componentsOf(accessor));
    std::memcpy(values.data(), elementsOf(file, accessor), values.size() * sizeof(float));
    return values;
}

std::vector<std::uint32_t> indicesOf(const PackedFile& file, const Json& accessor)
{
    const bool isShort = accessor.at("componentType").get<int>() == unsignedShort;
    const std::byte* bytes = elementsOf(file, accessor);
    std::vector<std::uint32_t> indices(accessor.at("count").get<std::size_t>());
    if (!isShort) {
        std::memcpy(indices.data(), bytes, indices.size() * sizeof(std::uint32_t));
        return indices;
    }
    for (std::size_t i = 0; i < indices.size(); ++i) {
        std::uint16_t narrow = 0;
        std::memcpy(&narrow, bytes + i * sizeof(narrow), sizeof(narrow));
        indices[i] = narrow;
    }
    return indices;
}

std::size_t addFloats(PackedFile& file, std::span<const float> values, const char* type)
{
    Json accessor = {{"componentType", int(Float)}, {"type", type}};
    const std::size_t count = values.size() / componentsOf(accessor);
    return addAccessor(file, std::as_bytes(values), count, std::move(accessor));
}

std::size_t addIndices(PackedFile& file, std::span<const std::uint32_t> indices)
{
    return addAccessor(file, std::as_bytes(indices), indices.size(),
                       {{"componentType", int(UnsignedInt)}, {"type", "SCALAR"}});
}

} // namespace files::glb::packing
