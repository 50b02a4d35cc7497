#pragma once

#include "tools/ptxconvert/model/Appearance.h"
#include "tools/ptxconvert/readers/jt/graph/SceneGraph.h"

namespace ptx::jt
{

/// What the materials on the way down to a node come to.
struct Finish {
    int appearance = NoAppearance;
    bool hidesVertexColours = false;
    unsigned final = 0; ///< fields that only forced materials change
};

/// What `around` and the materials of `node` come to, of which the last counts.
Finish finishOf(const SceneGraph& graph, const SceneNode& node, const Finish& around, AppearanceTable& appearances);

} // namespace ptx::jt
