#pragma once

#include "files/ReadTask.h"

#include <tiny_gltf.h>

#include <vector>

namespace files::gltf
{

/// The levels of detail of the nodes of a document (`MSFT_lod`): other nodes that take the place of one from afar.
class GltfLevels
{
public:
    /// Warns of nodes whose list is damaged, which have no levels then: it names a node that does not exist, the node
    /// itself, or one twice.
    GltfLevels(const tinygltf::Model& model, ReadTask& task);

    /// What is read in the place of the node `node`, which has to exist: itself, or the level of it that the options of
    /// the task ask for. The levels of a level do not count.
    int shown(int node) const;
    /// Whether the node is a level of another one, and no part of the scene itself.
    bool isLevel(int node) const { return m_isLevel[static_cast<std::size_t>(node)]; }

private:
    std::vector<int> m_shown;
    std::vector<bool> m_isLevel;
};

} // namespace files::gltf
