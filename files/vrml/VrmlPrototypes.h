#pragma once

#include "files/vrml/VrmlNodes.h"
#include "files/vrml/VrmlSource.h"

namespace files::vrml
{

/// A new node in `store`; fails at the place in `source` when there are too many.
Node& createNode(NodeStore& store, const Source& source, const NodeType& type, std::size_t offset,
                 std::uint64_t fields = 0);

/// What `instance`, a node of a prototype, stands for: a copy of the first node of its body, with the values of the
/// instance where the body asks for them. Null when there is none.
Node* expandInstance(NodeStore& store, const Source& source, const Node& instance);

} // namespace files::vrml
