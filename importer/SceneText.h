#pragma once

#include "host/OSGSystem/Node.h"

#include <cstddef>
#include <string>

/// What a tree holds. Shared content counts once in the first group, and as often as it is placed in the second.
struct znSceneCounts {
    std::size_t nodes = 0;
    std::size_t geometries = 0;
    std::size_t materials = 0;
    std::size_t triangles = 0;
    std::size_t references = 0; ///< nodes that stand for files

    std::size_t placedGeometries = 0;
    std::size_t placedTriangles = 0;

    friend bool operator==(const znSceneCounts&, const znSceneCounts&) = default;
};

/// Counts the tree at `root`; a null node counts as empty.
znSceneCounts countScene(const osg::NodePtr& root);

/// The tree at `root` as text for a person, one line a node: indentation by depth, name, kind of core, and what is
/// special about it (a placement, a file, triangles, a material). Cores that several nodes share carry the same number
/// behind an "@". The text depends on the tree alone, so that two trees can be compared by it.
std::string describeScene(const osg::NodePtr& root);
