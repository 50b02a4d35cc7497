#pragma once

#include "host/OSGSystem/Material.h"

#include <cstdint>

namespace optimization
{

/// A number that is the same for all materials that are equal (see `osg::FieldContainer::isEqual`), and mostly another
/// for those whose colours or surfaces differ, or those of the materials that they hold. Names and all other
/// attachments do not count; textures count by how many there are. That of null is a number, too.
std::uint64_t hashOf(const osg::MaterialPtr& material);

} // namespace optimization
