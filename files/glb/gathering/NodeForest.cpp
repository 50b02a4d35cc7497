#include "files/glb/gathering/NodeForest.h"

#include <algorithm>
#include <map>
#include <string>

namespace files::glb::gathering
{

namespace
{

bool isHead(const Json& node)
{
    const auto has = [&node](const char* list, const char* member) {
        const auto found = node.find(list);
        return found != node.end() && found->contains(member);
    };
    return has("extras", "variants") || has("extras", "annotations") || has("extensions", "KHR_node_visibility");
}

} // namespace

NodeForest::NodeForest(const Json& scene, const Json& nodes)
    : m_nodes(nodes), m_ranks(nodes.size(), none), m_parents(nodes.size(), none), m_regions(nodes.size(), none),
      m_depths(nodes.size(), 0), m_hasTwin(nodes.size())
{
    std::vector<std::size_t> open;
    const auto enter = [&](const Json& list, std::size_t parent) {
        findTwins(list);
        for (auto child = list.rbegin(); child != list.rend(); ++child) {
            const auto index = child->get<std::size_t>();
            m_parents[index] = parent;
            m_depths[index] = depth(parent) + 1;
            open.push_back(index);
        }
    };
    if (const auto roots = scene.find("nodes"); roots != scene.end())
        enter(*roots, none);
    while (!open.empty()) {
        const std::size_t node = open.back();
        open.pop_back();
        m_ranks[node] = m_order.size();
        m_order.push_back(node);
        m_regions[node] = isHead(nodes[node]) ? node : m_parents[node] == none ? none : m_regions[m_parents[node]];
        if (const auto children = nodes[node].find("children"); children != nodes[node].end())
            enter(*children, node);
    }
}

std::size_t NodeForest::commonAncestor(std::size_t a, std::size_t b) const
{
    while (a != b) {
        std::size_t& deeper = depth(a) >= depth(b) ? a : b;
        deeper = m_parents[deeper];
    }
    return a;
}

Affine NodeForest::place(std::size_t node, std::size_t above) const
{
    Affine place = packing::identityAffine;
    for (; node != above; node = m_parents[node])
        place = packing::product(packing::placeOf(m_nodes[node]), place);
    return place;
}

std::vector<std::string> NodeForest::path(std::size_t node, std::size_t above) const
{
    std::vector<std::string> names;
    if (node != above)
        node = m_parents[node];
    for (; node != above; node = m_parents[node])
        if (const auto name = m_nodes[node].find("name"); name != m_nodes[node].end())
            names.push_back(name->get<std::string>());
    std::reverse(names.begin(), names.end());
    return names;
}

void NodeForest::findTwins(const Json& siblings)
{
    std::map<std::string, std::size_t> known;
    for (const Json& sibling : siblings) {
        const auto index = sibling.get<std::size_t>();
        const auto [first, isNew] = known.try_emplace(m_nodes[index].value("name", std::string()), index);
        if (!isNew)
            m_hasTwin[index] = m_hasTwin[first->second] = true;
    }
}

bool NodeForest::isAmbiguous(std::size_t node, std::size_t above) const
{
    for (; node != above; node = m_parents[node])
        if (m_hasTwin[node])
            return true;
    return false;
}

} // namespace files::glb::gathering
