#include "ptx/scene/MaterialMaker.h"

#include "host/OSGSystem/Names.h"
#include "scene/EditScope.h"

#include <cmath>
#include <cstdio>

namespace ptx::scene
{

namespace
{

constexpr model::Appearance DefaultAppearance = {0.75f, 0.75f, 0.75f, 1};

int byteOf(float channel)
{
    return static_cast<int>(std::lround(channel * 255));
}

} // namespace

osg::SimpleMaterialPtr MaterialMaker::materialFor(int appearance)
{
    osg::RefPtr<osg::SimpleMaterialPtr>& known = m_materials[appearance];
    if (!known)
        known = make(appearance);
    return known;
}

osg::SimpleMaterialPtr MaterialMaker::make(int appearance) const
{
    using Fields = osg::SimpleMaterial;
    const model::Appearance& look = appearance == model::NoAppearance ? DefaultAppearance : m_appearances[appearance];
    const osg::SimpleMaterialPtr material = Fields::create();
    const osg::EditScope edit(material, Fields::DiffuseFieldMask | Fields::TransparencyFieldMask);
    material->setDiffuse({look.red, look.green, look.blue});
    material->setTransparency(1 - look.alpha);
    osg::setName(material, appearance == model::NoAppearance ? "default" : appearanceName(look));
    return material;
}

std::string appearanceName(const model::Appearance& appearance)
{
    char text[32];
    const int length = std::snprintf(text, sizeof text, "#%02x%02x%02x", byteOf(appearance.red),
                                     byteOf(appearance.green), byteOf(appearance.blue));
    if (appearance.alpha < 1)
        std::snprintf(text + length, sizeof text - static_cast<std::size_t>(length), " %ld%%",
                      std::lround(appearance.alpha * 100));
    return text;
}

} // namespace ptx::scene
