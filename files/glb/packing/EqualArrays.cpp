#include "files/glb/packing/EqualArrays.h"

#include <string_view>
#include <unordered_map>
#include <vector>

namespace files::glb::packing
{

namespace
{

/// The bytes of an array, of which `kind` tells how they are to be read.
struct Array {
    std::string kind;
    std::string_view bytes;

    bool operator==(const Array&) const = default;
};

struct ArrayHash {
    std::size_t operator()(const Array& array) const
    {
        return std::hash<std::string_view>()(array.bytes) ^ std::hash<std::string>()(array.kind);
    }
};

Array arrayOf(const PackedFile& file, const Json& accessor)
{
    const bool isIndex = accessor.at("type").get_ref<const std::string&>() == "SCALAR";
    const std::size_t numbers = isIndex ? 1 : componentsOf(accessor);
    const std::size_t width = accessor.at("componentType").get<int>() == unsignedShort ? 2 : 4;
    return {accessor.at("type").get<std::string>() + accessor.at("componentType").dump(),
            {reinterpret_cast<const char*>(elementsOf(file, accessor)),
             accessor.at("count").get<std::size_t>() * numbers * width}};
}

} // namespace

void shareEqualArrays(PackedFile& file)
{
    std::unordered_map<Array, std::size_t, ArrayHash> known;
    std::vector<std::size_t> same;
    for (std::size_t i = 0; i < file.accessors.size(); ++i)
        same.push_back(known.try_emplace(arrayOf(file, file.accessors[i]), i).first->second);
    for (Json& mesh : file.meshes)
        for (Json& primitive : mesh["primitives"]) {
            primitive["indices"] = same[primitive["indices"].get<std::size_t>()];
            for (Json& accessor : primitive["attributes"])
                accessor = same[accessor.get<std::size_t>()];
        }
}

} // namespace files::glb::packing
