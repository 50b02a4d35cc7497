#include "files/glb/GlbMaterials.h"

#include "files/glb/GlbAttributes.h"
#include "host/OSGSystem/Names.h"
#include "scene/ColorSpace.h"
#include "scene/MaterialLook.h"
#include "scene/SubMaterials.h"

#include <algorithm>
#include <cmath>

namespace files::glb
{

namespace
{

/// What glTF has of a look; display colours.
struct Look {
    osg::Color3f color = {0.8f, 0.8f, 0.8f};
    osg::Color3f emission;
    float alpha = 1;
    float roughness = 1;
};

float share(float value)
{
    return std::isfinite(value) ? std::clamp(value, 0.0f, 1.0f) : 0.0f;
}

float roughnessOf(float shininess)
{
    return shininess > 0 ? std::pow(2 / (shininess + 2), 0.25f) : 1.0f;
}

Look glbLookOf(const osg::MaterialPtr& material)
{
    Look look;
    if (const std::optional<osg::SurfaceLook> surface = osg::lookOf(material)) {
        look.color = surface->diffuse;
        look.emission = surface->emission;
        look.alpha = 1 - share(surface->transparency);
        look.roughness = roughnessOf(surface->shininess);
    }
    return look;
}

Json linear(const osg::Color3f& color)
{
    const osg::Color3f light = osg::linearFromDisplay(color);
    return {share(light.red), share(light.green), share(light.blue)};
}

Json materialOf(const osg::MaterialPtr& material)
{
    const Look look = glbLookOf(material);
    Json result;
    if (const char* name = osg::getName(material))
        result["name"] = name;
    Json& surface = result["pbrMetallicRoughness"];
    surface["baseColorFactor"] = linear(look.color);
    surface["baseColorFactor"].push_back(look.alpha);
    surface["metallicFactor"] = 0;
    surface["roughnessFactor"] = look.roughness;
    if (look.emission != osg::Color3f())
        result["emissiveFactor"] = linear(look.emission);
    if (look.alpha < 1)
        result["alphaMode"] = "BLEND";
    result["doubleSided"] = true;
    return result;
}

} // namespace

std::size_t GlbMaterials::number(const osg::MaterialPtr& material)
{
    const osg::MaterialPtr shown = osg::shownMaterial(material);
    const auto known = m_numbers.find(shown);
    if (known != m_numbers.end())
        return known->second;
    return m_numbers[shown] = m_list.addText(withExtras(materialOf(shown), materialMembers(shown)));
}

} // namespace files::glb
