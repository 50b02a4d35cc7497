#include "geometry/rays/Look.h"

#include "geometry/rays/LightColor.h"
#include "scene/MaterialLook.h"
#include "scene/SubMaterials.h"

#include <cmath>

namespace geometry::rays
{

Look lookOf(const osg::MaterialPtr& material)
{
    Look look;
    if (const std::optional<osg::SurfaceLook> surface = osg::lookOf(osg::shownMaterial(material))) {
        look.diffuse = toLight(surface->diffuse);
        look.emission = toLight(surface->emission);
        const float transparency = surface->transparency;
        look.alpha = std::isfinite(transparency) ? std::clamp(1 - transparency, 0.0f, 1.0f) : 1.0f;
    }
    return look;
}

} // namespace geometry::rays
