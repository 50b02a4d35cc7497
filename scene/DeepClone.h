#pragma once

#include "host/OSGSystem/Node.h"

#include <string>

namespace osg
{

/// Parts a clone from the tree that it shares its cores with: each node at and below `root` gets a copy of its core,
/// nodes that shared a core share its copy, and each name gets `nameSuffix` at its end. A null root is ignored.
void partFromOriginal(const NodePtr& root, const std::string& nameSuffix);

} // namespace osg
