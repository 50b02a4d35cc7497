#pragma once

#include "tools/ptxconvert/readers/jt/graph/SceneGraph.h"

namespace ptx::jt
{

/// What the property atoms of a scene graph say, by their number.
struct Atoms {
    std::unordered_map<Id, std::string> texts;
    std::unordered_map<Id, LateLoaded> lateLoaded;
};

/// The version that each block of an element begins with: nothing in version 8, then 16 bits, then 8.
void skipBlockVersion(Cursor& in, int major);

/// The rest of a node whose number is read. What follows the part that is known is left.
SceneNode readNode(Cursor& in, int major, ElementKind kind, int baseType);

/// The rest of an attribute whose number is read; empty for kinds that say nothing of colour or place.
Attribute readAttribute(Cursor& in, int major, ElementKind kind);

/// The rest of a property atom whose number is read.
void readAtom(Cursor& in, int major, ElementKind kind, Id id, Atoms& atoms);

/// The table that gives properties to nodes, which ends the segment.
void readPropertyTable(Cursor& in, const Atoms& atoms, SceneGraph& graph);

} // namespace ptx::jt
