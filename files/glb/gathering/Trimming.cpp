#include "files/glb/gathering/Trimming.h"

#include "files/glb/gathering/NodeForest.h"

#include <algorithm>

namespace files::glb::gathering
{

namespace
{

bool has(const Json& node, const char* member)
{
    return node.contains(member);
}

/// The numbers of those that stay, close together.
std::vector<std::size_t> newNumbers(const std::vector<bool>& isGone)
{
    std::vector<std::size_t> numbers;
    std::size_t next = 0;
    for (const bool gone : isGone)
        numbers.push_back(gone ? NodeForest::none : next++);
    return numbers;
}

/// The entries of `list` that stay, moved together.
void dropFrom(Json& list, const std::vector<bool>& isGone)
{
    Json kept = Json::array();
    for (std::size_t i = 0; i < list.size(); ++i)
        if (!isGone[i])
            kept.push_back(std::move(list[i]));
    list = std::move(kept);
}

} // namespace

Json Trimming::takeMesh(std::size_t index, bool isKept)
{
    Json& node = m_file.nodes[index];
    node.erase("mesh");
    m_isEmptied[index] = true;
    Json entry = Json::object();
    const auto extras = node.find("extras");
    if (extras != node.end() && !isKept && !has(node, "children") && !has(node, "camera") && !has(node, "extensions")) {
        entry = std::move(*extras);
        node.erase(extras);
    }
    if (const auto name = node.find("name"); name != node.end())
        entry["name"] = *name;
    return entry;
}

void Trimming::add(std::size_t parent, Json node)
{
    Json& above = parent == NodeForest::none ? m_file.scene["nodes"] : m_file.nodes[parent]["children"];
    above.push_back(m_file.nodes.size());
    m_file.nodes.push_back(std::move(node));
}

void Trimming::finish(const std::vector<std::size_t>& order)
{
    std::vector<bool> isGone(m_file.nodes.size());
    for (auto at = order.rbegin(); at != order.rend(); ++at) {
        Json& node = m_file.nodes[*at];
        if (const auto children = node.find("children"); children != node.end()) {
            const std::size_t before = children->size();
            std::erase_if(children->get_ref<Json::array_t&>(),
                          [&](const Json& child) { return isGone[child.get<std::size_t>()]; });
            if (children->size() < before)
                m_isEmptied[*at] = true;
            if (children->empty())
                node.erase(children);
        }
        constexpr const char* content[] = {"mesh", "children", "camera", "extensions", "extras"};
        isGone[*at] = m_isEmptied[*at] && std::none_of(std::begin(content), std::end(content),
                                                       [&](const char* member) { return has(node, member); });
    }
    dropNodes(isGone);
    dropMeshes();
}

void Trimming::dropNodes(const std::vector<bool>& isGone)
{
    const std::vector<std::size_t> numbers = newNumbers(isGone);
    const auto renumber = [&](Json& list) {
        std::erase_if(list.get_ref<Json::array_t&>(),
                      [&](const Json& node) { return isGone[node.get<std::size_t>()]; });
        for (Json& node : list)
            node = numbers[node.get<std::size_t>()];
    };
    dropFrom(m_file.nodes, isGone);
    for (Json& node : m_file.nodes)
        if (const auto children = node.find("children"); children != node.end())
            renumber(*children);
    renumber(m_file.scene["nodes"]);
}

void Trimming::dropMeshes()
{
    std::vector<bool> isGone(m_file.meshes.size(), true);
    for (const Json& node : m_file.nodes)
        if (const auto mesh = node.find("mesh"); mesh != node.end())
            isGone[mesh->get<std::size_t>()] = false;
    const std::vector<std::size_t> numbers = newNumbers(isGone);
    for (Json& node : m_file.nodes)
        if (const auto mesh = node.find("mesh"); mesh != node.end())
            *mesh = numbers[mesh->get<std::size_t>()];
    dropFrom(m_file.meshes, isGone);
}

} // namespace files::glb::gathering
