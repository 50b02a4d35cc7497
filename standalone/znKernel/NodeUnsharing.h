#pragma once

#include "host/OSGSystem/Node.h"

namespace zn::kernel
{

/// Gives `root`, and with `recursive` all below it, cores of their own in place of those that are used elsewhere too.
/// @param keepMaterials whether a copied core goes on sharing its material
void giveOwnCores(const osg::NodePtr& root, bool recursive, bool keepMaterials);

} // namespace zn::kernel
