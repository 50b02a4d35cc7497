#pragma once

#include "host/OSGSystem/Node.h"

namespace osg
{

/// The material that `core` holds: that of a material group, or of what is drawn. Null when it holds none or is null.
MaterialPtr materialOf(const NodeCorePtr& core);

/// The material that is seen below `node`, which is not null, where `above` is what is seen below its parent, null for
/// none: the topmost material group with a material rules all below it.
MaterialPtr materialBelow(const NodePtr& node, const MaterialPtr& above);

/// Gives `material` to `core` within the bracket of its field; null takes the material away. False when `core` cannot
/// hold one or is null.
bool setMaterial(const NodeCorePtr& core, const MaterialPtr& material);

} // namespace osg
