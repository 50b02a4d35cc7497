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

const GlbMaterials::Needs& GlbMaterials::needsOf(const osg::MaterialPtr& shown)
{
    const auto [entry, isNew] = m_needs.try_emplace(shown);
    if (!isNew)
        return entry->second;
    const osg::PhysicalSurface surface = osg::surfaceOf(shown);
    entry->second.sets = setsOf(surface);
    for (const osg::TextureSlot slot : {osg::TextureSlot::ClearcoatNormal, osg::TextureSlot::Normal})
        if (const auto found = surface.textures.find(slot); found != surface.textures.end())
            entry->second.normalMapSet = found->second.set;
    return entry->second;
}

std::optional<unsigned> GlbMaterials::normalMapSet(const osg::MaterialPtr& material)
{
    return m_textures.areWritten() ? needsOf(osg::shownMaterial(material)).normalMapSet : std::nullopt;
}

std::size_t GlbMaterials::number(const osg::MaterialPtr& material, unsigned sets)
{
    const osg::MaterialPtr shown = osg::shownMaterial(material);
    const unsigned needed = needsOf(shown).sets;
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

std::size_t GlbMaterials::edges()
{
    if (m_edges)
        return *m_edges;
    osg::PhysicalSurface surface;
    surface.unlit = true;
    constexpr osg::Color3f dark = {0.1f, 0.1f, 0.1f};
    m_names.push_back(m_uniqueNames.unique("edges"));
    Json json = surfaceJson(surface, dark, {}, 0, m_textures, m_extensions);
    json["name"] = m_names.back();
    m_edges = m_list.add(json);
    return *m_edges;
}

} // namespace files::glb
