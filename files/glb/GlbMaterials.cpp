#include "files/glb/GlbMaterials.h"

#include "files/glb/GlbAttributes.h"
#include "files/glb/GlbNumbers.h"
#include "host/OSGSystem/Names.h"
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

float roughnessOf(float shininess)
{
    return shininess > 0 ? sixDigits(std::pow(2 / (double(shininess) + 2), 0.25)) : 1.0f;
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
    return {linearShare(color.red), linearShare(color.green), linearShare(color.blue)};
}

std::string nameOf(const osg::MaterialPtr& material, const Look& look)
{
    const char* name = osg::getName(material);
    if (!name || !*name)
        return colorName(look.color);
    return isColorCode(name) ? std::string(colorWord(look.color)) + " " + name : decodedName(name);
}

Json materialOf(const Look& look, const std::string& name)
{
    Json result;
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
    const Look look = glbLookOf(shown);
    m_names.push_back(m_uniqueNames.unique(nameOf(shown, look)));
    return m_numbers[shown] = m_list.addText(withExtras(materialOf(look, m_names.back()), materialMembers(shown)));
}

} // namespace files::glb
