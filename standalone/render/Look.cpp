#include "standalone/render/Look.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/SimpleMaterial.h"
#include "standalone/render/LightColor.h"

#include <cmath>

namespace render
{

Look lookOf(const osg::MaterialPtr& material)
{
    Look look;
    if (const auto simple = osg::fcCast<osg::SimpleMaterial>(material)) {
        look.diffuse = toLight(simple->getDiffuse());
        look.emission = toLight(simple->getEmission());
        const float transparency = simple->getTransparency();
        look.alpha = std::isfinite(transparency) ? std::clamp(1 - transparency, 0.0f, 1.0f) : 1.0f;
    }
    return look;
}

} // namespace render
