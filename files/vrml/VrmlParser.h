#pragma once

#include "files/vrml/VrmlNodes.h"
#include "files/vrml/VrmlSource.h"

namespace files::vrml
{

/// How deep nodes may lie in each other, however they came there: by writing, by prototypes or by repeated use.
inline constexpr std::uint64_t maxNesting = 500;

/// The nodes that `source` has at its top, in their order. Instances of prototypes are replaced by what they stand for;
/// a node that is used several times is the same one in all places, so that the result has no circles, but is no tree.
/// Nodes that are neither seen nor known are left out. The nodes live in `store`. Fails through the task of the source.
Nodes parse(const Source& source, NodeStore& store);

} // namespace files::vrml
