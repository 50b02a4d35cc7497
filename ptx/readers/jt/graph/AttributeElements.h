#pragma once

#include "ptx/readers/jt/graph/SceneGraph.h"

namespace ptx::jt::graph
{

/// The rest of an attribute whose number is read; empty for kinds that say nothing of colour or place.
Attribute readAttribute(container::Cursor& in, int major, ElementKind kind);

} // namespace ptx::jt::graph
