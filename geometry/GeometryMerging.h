#pragma once

#include "host/OSGSystem/Node.h"

#include <cstddef>
#include <limits>
#include <unordered_set>

namespace geometry
{

/// What merging leaves alone, and how far it goes.
struct MergingChoice {
    std::unordered_set<const osg::Node*> kept = {};                     ///< nodes that stay
    std::size_t mostVertices = std::numeric_limits<std::size_t>::max(); ///< of a merged geometry
};

/// Whether a container has no attachment, or its name alone.
bool hasNothingButAName(const osg::AttachmentContainer& container);

/// Whether `znOptimize::mergeGeometry` would merge `node` with its like.
bool isMergeable(const osg::NodePtr& node);

/// What `znOptimize::mergeGeometry` does; see there. A geometry with too many vertices for company stays as it is.
void mergeGeometry(const osg::NodePtr& root, const MergingChoice& choice = {});

} // namespace geometry
