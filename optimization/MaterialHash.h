#pragma once

#include "host/OSGSystem/Material.h"

#include <cstdint>

namespace optimization
{

/// A number that is the same for all materials that are equal (see `osg::FieldContainer::isEqual`), and mostly another
/// for those whose colours differ, or the materials that they choose among. Names, attachments and environments do not
/// count: not every host has physical surfaces, and tells environments. That of null is a number, too.
std::uint64_t hashOf(const osg::MaterialPtr& material);

} // namespace optimization
