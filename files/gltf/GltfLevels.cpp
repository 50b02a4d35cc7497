#include "files/gltf/GltfLevels.h"

#include <algorithm>
#include <numeric>
#include <optional>

namespace files::gltf
{

namespace
{

/// The levels below that of the node itself, the finest first. Nothing when the list is damaged.
std::optional<std::vector<int>> levelsOf(const tinygltf::Model& model, std::size_t index)
{
    std::vector<int> levels;
    const auto extension = model.nodes[index].extensions.find("MSFT_lod");
    if (extension == model.nodes[index].extensions.end())
        return levels;
    const tinygltf::Value ids = extension->second.IsObject() ? extension->second.Get("ids") : tinygltf::Value();
    if (!ids.IsArray())
        return std::nullopt;
    for (std::size_t i = 0; i < ids.ArrayLen(); ++i) {
        const tinygltf::Value& id = ids.Get(static_cast<int>(i));
        const double number = id.IsNumber() ? id.GetNumberAsDouble() : -1;
        if (!(number >= 0 && number < double(model.nodes.size())) || number != double(static_cast<int>(number)))
            return std::nullopt;
        levels.push_back(static_cast<int>(number));
    }
    std::vector<int> all = levels;
    all.push_back(static_cast<int>(index));
    std::sort(all.begin(), all.end());
    if (std::adjacent_find(all.begin(), all.end()) != all.end())
        return std::nullopt;
    return levels;
}

} // namespace

GltfLevels::GltfLevels(const tinygltf::Model& model, ReadTask& task)
    : m_shown(model.nodes.size()), m_isLevel(model.nodes.size())
{
    std::iota(m_shown.begin(), m_shown.end(), 0);
    for (std::size_t i = 0; i < model.nodes.size(); ++i) {
        const std::optional<std::vector<int>> levels = levelsOf(model, i);
        if (!levels)
            task.warn(tr("the levels of detail of this node are damaged; only itself is read"),
                      QStringLiteral("/nodes/%1").arg(static_cast<qulonglong>(i)));
        if (!levels || levels->empty())
            continue;
        for (const int level : *levels)
            m_isLevel[static_cast<std::size_t>(level)] = true;
        const auto wanted = std::min(static_cast<std::size_t>(task.options().level), levels->size());
        if (wanted > 0)
            m_shown[i] = (*levels)[wanted - 1];
    }
}

int GltfLevels::shown(int node) const
{
    return m_shown[static_cast<std::size_t>(node)];
}

} // namespace files::gltf
