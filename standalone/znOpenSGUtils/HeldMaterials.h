#pragma once

#include "host/OSGSystem/Material.h"

#include <vector>

namespace zn::nodes
{

/// Appends `material` and all that it holds at any depth, environments among it, each once, from the outside in.
/// @param shownOnly of switch materials only what is chosen
void appendHeldMaterials(const osg::MaterialPtr& material, std::vector<osg::MaterialPtr>& materials, bool shownOnly);

} // namespace zn::nodes
