#pragma once

#include "host/OSGSystem/Node.h"

namespace zn::nodes
{

/// Gives `material` to the core of `root`. False when no core was changed.
/// @param below to what hangs below `root` as well
/// @param asCopy each core gets a copy of its own
bool setMaterialOfTree(const osg::NodePtr& root, const osg::MaterialPtr& material, bool below, bool asCopy);

} // namespace zn::nodes
