#pragma once

#include "files/glb/packing/PackedFile.h"

#include <vector>

namespace files::glb::levels
{

/// What takes the place of a mesh from afar.
struct LowerLevels {
    std::vector<std::size_t> meshes; ///< the finest first
    /// The share of the screen that the mesh covers at least in each level, its own first.
    std::vector<double> coverage;
};

/// Lets each node that draws a mesh with lower levels, by the number of the mesh, name them (`MSFT_lod`). Their nodes
/// stand behind all others, in no list of children. As a lower level takes the place of the whole node, a node that
/// says more than where and what it draws gets a node below it that draws.
void addLevelNodes(packing::Json& nodes, const std::vector<LowerLevels>& levels);

} // namespace files::glb::levels
