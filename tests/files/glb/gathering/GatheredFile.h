#pragma once

#include "files/glb/packing/PackedFile.h"

#include <string>
#include <vector>

/// Small files as the writer makes them before they are packed.
namespace gathered
{

using files::glb::packing::Json;
using files::glb::packing::PackedFile;

/// A primitive with one triangle from the origin to (size, 0, 0) and (0, size, 0), `count` times.
inline Json triangles(PackedFile& file, float size, std::size_t count = 1, std::size_t material = 0)
{
    const std::vector<float> positions = {0, 0, 0, size, 0, 0, 0, size, 0};
    const std::vector<float> normals = {0, 0, 1, 0, 0, 1, 0, 0, 1};
    std::vector<std::uint32_t> indices;
    for (std::size_t i = 0; i < count; ++i)
        indices.insert(indices.end(), {0, 1, 2});
    Json primitive = {{"mode", 4}, {"material", material}};
    primitive["attributes"]["POSITION"] = files::glb::packing::addFloats(file, positions, "VEC3");
    file.accessors.back()["min"] = {0.0, 0.0, 0.0};
    file.accessors.back()["max"] = {size, size, 0.0};
    primitive["attributes"]["NORMAL"] = files::glb::packing::addFloats(file, normals, "VEC3");
    primitive["indices"] = files::glb::packing::addIndices(file, indices);
    return primitive;
}

/// Materials that differ in name and colour, the second one red, the third one rougher; then one seen through.
inline PackedFile emptyFile()
{
    PackedFile file;
    file.scene = Json::parse(R"({"nodes": [0]})");
    file.nodes = Json::array();
    file.meshes = Json::array();
    file.accessors = Json::array();
    file.bufferViews = Json::array();
    file.materials = Json::parse(R"([
        {"name": "white", "pbrMetallicRoughness": {"baseColorFactor": [1, 1, 1, 1]}},
        {"name": "red", "extras": {"a": 1}, "pbrMetallicRoughness": {"baseColorFactor": [1, 0, 0, 1]}},
        {"name": "rough", "pbrMetallicRoughness": {"roughnessFactor": 0.5}},
        {"name": "glass", "alphaMode": "BLEND"}])");
    return file;
}

inline void addMesh(PackedFile& file, const std::string& name, std::vector<Json> primitives)
{
    file.meshes.push_back({{"name", name}, {"primitives", std::move(primitives)}});
}

/// How many primitives are drawn, instances as one.
inline std::size_t draws(const PackedFile& file)
{
    std::size_t count = 0;
    for (const Json& node : file.nodes)
        if (const auto mesh = node.find("mesh"); mesh != node.end())
            count += file.meshes.at(mesh->get<std::size_t>()).at("primitives").size();
    return count;
}

} // namespace gathered
