#pragma once

#include "host/OSGSystem/Node.h"

namespace zn::kernel
{

/// Moves the tree at `root`, which hangs in the scene, to where the user wants it: the middle of its bounding box to
/// the origin, its lowest point to the height 0. The height follows `putOnGround` where both are wanted. The root
/// gets the transform, in place of a plain group if it is one; a tree without vertices stays where it is. Null is
/// ignored.
void applyGeometryImportTransformations(const osg::NodePtr& root, bool centerInOrigin, bool putOnGround);

} // namespace zn::kernel
