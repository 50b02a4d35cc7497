#pragma once

#include "host/OSGSystem/Node.h"

namespace zn
{

/// The material that `core` holds; null when it holds none or is null.
osg::MaterialPtr materialOf(const osg::NodeCorePtr& core);
/// Gives `material` to `core` within the bracket of its field. False when it cannot hold one.
bool setMaterial(const osg::NodeCorePtr& core, const osg::MaterialPtr& material);
/// Gives `material` to the core of `root`. False when no core was changed.
/// @param below to what hangs below `root` as well
/// @param asCopy each core gets a copy of its own
bool setMaterialOfTree(const osg::NodePtr& root, const osg::MaterialPtr& material, bool below, bool asCopy);

} // namespace zn
