#include "scene/MaterialLook.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/SimpleMaterial.h"

namespace osg
{

std::optional<SurfaceLook> lookOf(const MaterialPtr& material)
{
    if (const auto simple = fcCast<SimpleMaterial>(material))
        return SurfaceLook{simple->getAmbient(),  simple->getDiffuse(),   simple->getEmission(),
                           simple->getSpecular(), simple->getShininess(), simple->getTransparency()};
    if (const auto uber = fcCast<UberMaterial>(material))
        return uber->getLook();
    return std::nullopt;
}

} // namespace osg
