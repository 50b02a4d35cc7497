#pragma once

#include "host/OSGSystem/Node.h"

#include <cstdint>

namespace frame
{

/// The node that a file goes below when the node of the id `target` is wanted.
///
/// Where that is gone, the selected node takes its place, which may be null; where the place is a drawable, is locked
/// or lies in an asset that is not open for editing, the scene root does. The low 32 bits of the id count.
osg::NodePtr insertionNode(std::uint64_t target);

} // namespace frame
