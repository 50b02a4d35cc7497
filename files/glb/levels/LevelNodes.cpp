#include "files/glb/levels/LevelNodes.h"

#include <algorithm>
#include <utility>

namespace files::glb::levels
{

namespace
{

using packing::Json;

constexpr const char* instancing = "EXT_mesh_gpu_instancing";

bool hasInstances(const Json& node)
{
    return node.contains("extensions") && node.at("extensions").contains(instancing);
}

/// Whether the extras of `node` are nothing but the table of what it draws.
bool isTable(const Json& extras)
{
    return std::all_of(extras.items().begin(), extras.items().end(),
                       [](const auto& member) { return member.key() == "parts" || member.key() == "instances"; });
}

/// A name is no reason for another node: levels are found below the one that has it.
bool canBeReplaced(const Json& node)
{
    constexpr const char* others[] = {"children", "camera"};
    const std::size_t extensions = node.contains("extensions") ? node.at("extensions").size() : 0;
    return extensions == (hasInstances(node) ? 1u : 0u) && (!node.contains("extras") || isTable(node.at("extras"))) &&
           std::none_of(std::begin(others), std::end(others),
                        [&](const char* member) { return node.contains(member); });
}

/// Takes what `node` draws, and where its instances are, into a node of its own.
Json drawing(Json& node)
{
    Json below = {{"mesh", std::move(node["mesh"])}};
    node.erase("mesh");
    if (hasInstances(node)) {
        below["extensions"][instancing] = std::move(node["extensions"][instancing]);
        node["extensions"].erase(instancing);
        if (node["extensions"].empty())
            node.erase("extensions");
    }
    return below;
}

} // namespace

void addLevelNodes(Json& nodes, const std::vector<LowerLevels>& levels)
{
    const std::size_t count = nodes.size();
    for (std::size_t i = 0; i < count; ++i) {
        const auto mesh = nodes[i].find("mesh");
        if (mesh == nodes[i].end() || levels[mesh->get<std::size_t>()].meshes.empty())
            continue;
        const LowerLevels& lower = levels[mesh->get<std::size_t>()];
        std::size_t finest = i;
        if (!canBeReplaced(nodes[i])) {
            finest = nodes.size();
            nodes.push_back(drawing(nodes[i]));
            nodes[i]["children"].push_back(finest);
        }
        Json copy = nodes[finest];
        copy.erase("name");
        copy.erase("extras");
        Json ids = Json::array();
        for (const std::size_t level : lower.meshes) {
            copy["mesh"] = level;
            ids.push_back(nodes.size());
            nodes.push_back(Json(copy));
        }
        nodes[finest]["extensions"]["MSFT_lod"]["ids"] = std::move(ids);
        nodes[finest]["extras"]["MSFT_screencoverage"] = lower.coverage;
    }
}

} // namespace files::glb::levels
