#pragma once

#include "ptx/readers/jt/graph/SceneGraph.h"

namespace ptx::jt::graph
{

/// What the property atoms of a scene graph say, by their number.
struct Atoms {
    std::unordered_map<Id, PropertyValue> texts;
    std::unordered_map<Id, LateLoaded> lateLoaded;
};

/// The rest of a property atom whose number is read.
void readAtom(container::Cursor& in, int major, ElementKind kind, Id id, Atoms& atoms);

/// The table that gives properties to nodes, which ends the segment.
void readPropertyTable(container::Cursor& in, const Atoms& atoms, SceneGraph& graph);

/// The properties that a metadata segment, unpacked to `data`, gives the node that names it. What is wrong ends the
/// list early and is told by `damage`. A segment of another kind of metadata holds none.
Properties readPropertyProxy(container::Bytes data, int major, bool isBigEndian, container::Damage& damage);

} // namespace ptx::jt::graph
