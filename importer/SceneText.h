#pragma once

#include "host/OSGSystem/Node.h"

#include <cstddef>
#include <string>

namespace zn
{

/// What a tree holds. Shared content counts once in the first group, and as often as it is placed in the second.
struct SceneCounts {
    std::size_t nodes = 0;      ///< nodes of the tree, its root included
    std::size_t geometries = 0; ///< different geometries
    std::size_t materials = 0;  ///< different materials
    std::size_t triangles = 0;  ///< of the different geometries
    std::size_t references = 0; ///< nodes that stand for files

    std::size_t placedGeometries = 0; ///< nodes whose core is a geometry
    std::size_t placedTriangles = 0;  ///< of all nodes whose core is a geometry

    /// Equal counts.
    friend bool operator==(const SceneCounts&, const SceneCounts&) = default;
};

/// Counts the tree at `root`; a null node counts as empty.
SceneCounts countScene(const osg::NodePtr& root);

/// The tree at `root` as text for a person, one line a node: indentation by depth, name, kind of core, and what is
/// special about it (a placement, a file, triangles, a material). Cores that several nodes share carry the same number
/// behind an "@". The text depends on the tree alone, so that two trees can be compared by it. With `attributes` those
/// of a node stand below it, a line each, and those of a product at the first of its nodes; control characters are
/// written as "\x1b", and long texts are cut.
std::string describeScene(const osg::NodePtr& root, bool attributes = false);

} // namespace zn
