#pragma once

#include "ptx/readers/jt/graph/SceneGraph.h"

namespace ptx::jt::graph
{

/// The rest of a node whose number is read. What follows the part that is known is left.
SceneNode readNode(container::Cursor& in, int major, ElementKind kind, int baseType);

} // namespace ptx::jt::graph
