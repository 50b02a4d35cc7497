#pragma once

#include "host/OSGSystem/Node.h"

namespace zn
{

/// The material that `core` holds; null when it holds none or is null.
osg::MaterialPtr materialOf(const osg::NodeCorePtr& core);
/// Gives `material` to `core` within the bracket of its field. False when it cannot hold one.
bool setMaterial(const osg::NodeCorePtr& core, const osg::MaterialPtr& material);

} // namespace zn
