#include "files/glb/GlbMaterials.h"

#include "files/glb/GlbAttributes.h"
#include "files/glb/GlbSurfaces.h"
#include "host/OSGSystem/Names.h"
#include "scene/MaterialLook.h"
#include "scene/SubMaterials.h"

namespace files::glb
{

namespace
{

std::string nameOf(const osg::MaterialPtr& material, const osg::Color3f& color)
{
    const char* name = osg::getName(material);
    if (!name || !*name)
        return colorName(color);
    return isColorCode(name) ? std::string(colorWord(color)) + " " + name : decodedName(name);
}

} // namespace

std::size_t GlbMaterials::number(const osg::MaterialPtr& material, unsigned sets)
{
    const osg::MaterialPtr shown = osg::shownMaterial(material);
    const auto [known, isFirst] = m_neededSets.try_emplace(shown);
    if (isFirst)
        known->second = setsOf(osg::surfaceOf(shown));
    const unsigned needed = known->second;
    const auto [entry, isNew] = m_numbers.try_emplace({shown, needed & sets}, m_list.size());
    if (!isNew)
        return entry->second;
    const osg::PhysicalSurface surface = osg::surfaceOf(shown);
    m_withoutCoordinates += (needed & ~sets) != 0 ? 1 : 0;
    const osg::SurfaceLook look = osg::lookOf(shown).value_or(osg::SurfaceLook());
    m_names.push_back(m_uniqueNames.unique(nameOf(shown, look.diffuse)));
    Json json = surfaceJson(surface, look.diffuse, look.emission, sets, m_textures, m_extensions);
    json["name"] = m_names.back();
    m_list.addText(withExtras(json, materialMembers(shown)));
    return entry->second;
}

} // namespace files::glb
