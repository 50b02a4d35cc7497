#pragma once

#include "host/OSGSystem/Node.h"

#include <cstddef>
#include <unordered_set>

namespace geometry
{

/// What gathering leaves alone, and how far it goes.
struct GatheringChoice {
    std::unordered_set<const osg::Node*> kept;     ///< stay what and where they are
    std::unordered_set<const osg::Node*> nameless; ///< their names say nothing
    std::size_t mostVertices = 65'535;             ///< of one that was put together: what small indices can count
};

/// Makes one geometry of those of one material and one make (see `znOptimize::mergeGeometry`) that are in one
/// assembly of the tree at `root`, however deep: places that say nothing do not part them. Groups and transforms say
/// nothing when they are active and have no name and no attachment. What a geometry's place moves goes into its
/// vertices.
///
/// Only geometries that stand at one place leave it, and none with exact surfaces, which could not follow. Those that
/// share arrays take no part: no vertex is there twice afterwards. Places that hold nothing any more go. `root` stays.
void gatherGeometry(const osg::NodePtr& root, const GatheringChoice& choice);

} // namespace geometry
