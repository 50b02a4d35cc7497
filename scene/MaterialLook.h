#pragma once

#include "host/znOpenSGUberMaterial/UberMaterial.h"

#include <optional>

namespace osg
{

/// The look of a simple or an uber material; nothing for a null one and for other classes.
std::optional<SurfaceLook> lookOf(const MaterialPtr& material);

} // namespace osg
