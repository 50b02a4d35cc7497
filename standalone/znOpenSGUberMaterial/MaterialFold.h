#pragma once

#include "host/OSGSystem/Node.h"

#include <set>

namespace zn::materials
{

/// Makes one material of those in the tree at `root` that have one class, one name and equal fields. Of several equal
/// ones that stays which is in `wanted` (container ids), else the one with the lowest id. No material is changed.
void foldMaterials(const osg::NodePtr& root, const std::set<unsigned>& wanted);

} // namespace zn::materials
