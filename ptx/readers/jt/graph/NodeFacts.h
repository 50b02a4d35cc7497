#pragma once

#include "ptx/readers/jt/graph/SceneGraph.h"

#include <optional>
#include <string>
#include <vector>

namespace ptx::jt::graph
{

/// The name that the properties of a node give it; empty if none does.
std::string nameOf(const SceneNode& node);

/// The layer and the attributes of a node as tags, in the words of files/scenefile/ConvertedTree.h.
std::vector<std::string> tagsOf(const SceneNode& node);

/// A unit of length by its name in the file.
struct Unit {
    std::string name;
    double millimetres = 1;
};

/// The unit of a file: the first that a node says, from the root down, level by level.
std::optional<Unit> unitOf(const SceneGraph& graph);

/// The nodes of `graph` that the root leads to, level by level from the root on, each once.
std::vector<Id> nodesFromRootDown(const SceneGraph& graph);

} // namespace ptx::jt::graph
