#pragma once

#include "ptx/model/Appearance.h"
#include "ptx/readers/jt/graph/SceneGraph.h"

namespace ptx::jt::graph
{

/// What the materials on the way down to a node come to.
struct InheritedMaterial {
    int appearance = model::NoAppearance;
    bool hidesVertexColours = false;
    unsigned final = 0; ///< fields that only forced materials change
};

/// What `around` and the materials of `node` come to, of which the last counts.
InheritedMaterial inheritedMaterial(const SceneGraph& graph, const SceneNode& node, const InheritedMaterial& around,
                                    model::AppearanceTable& appearances);

} // namespace ptx::jt::graph
