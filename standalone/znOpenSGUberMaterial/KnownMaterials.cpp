#include "standalone/znOpenSGUberMaterial/KnownMaterials.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/FieldContainerFactory.h"
#include "host/OSGSystem/Names.h"
#include "scene/MaterialLook.h"

#include <functional>

namespace zn::materials
{

namespace
{

/// Zeros of either sign are equal, so they count alike.
std::size_t mixed(std::size_t hash, float value)
{
    return (hash ^ std::hash<float>()(value + 0.0f)) * 0x9e3779b97f4a7c15u;
}

std::size_t mixed(std::size_t hash, const osg::Color3f& color)
{
    return mixed(mixed(mixed(hash, color.red), color.green), color.blue);
}

std::size_t hashOf(const osg::MaterialPtr& material)
{
    const auto look = osg::lookOf(material);
    if (!look)
        return 0;
    std::size_t hash = 1;
    for (const osg::Color3f& color : {look->ambient, look->diffuse, look->emission, look->specular})
        hash = mixed(hash, color);
    return mixed(mixed(hash, look->shininess), look->transparency);
}

} // namespace

KnownMaterials::KnownMaterials(const std::set<unsigned>& ids, znMaterialComparison::MaterialCompareSettings settings)
    : m_settings(settings)
{
    for (const unsigned id : ids)
        if (const auto material = osg::fcCast<osg::Material>(osg::FieldContainerFactory::the()->getContainer(id)))
            add(material);
}

void KnownMaterials::add(const osg::MaterialPtr& material)
{
    m_alike[keyOf(material)].push_back(material);
    m_found[material.get()] = material;
}

osg::MaterialPtr KnownMaterials::of(const osg::MaterialPtr& material)
{
    const auto [place, isNew] = m_found.try_emplace(material.get(), material);
    if (isNew)
        place->second = lookUp(material);
    return place->second;
}

osg::MaterialPtr KnownMaterials::take(const osg::MaterialPtr& material)
{
    const bool isNew = !m_found.contains(material.get());
    const osg::MaterialPtr known = of(material);
    if (isNew && known == material)
        add(material);
    return known;
}

KnownMaterials::Key KnownMaterials::keyOf(const osg::MaterialPtr& material) const
{
    const char* name = m_settings & znMaterialComparison::CompareNames ? osg::getName(material) : nullptr;
    return {material->getType().getId(), name ? name : "",
            m_settings & znMaterialComparison::CompareFields ? hashOf(material) : 0};
}

osg::MaterialPtr KnownMaterials::lookUp(const osg::MaterialPtr& material) const
{
    const auto alike = m_alike.find(keyOf(material));
    if (alike != m_alike.end())
        for (const osg::MaterialPtr& candidate : alike->second)
            if (znMaterialComparison::areEqual(material, candidate, m_settings))
                return candidate;
    return material;
}

std::size_t KnownMaterials::KeyHash::operator()(const Key& key) const
{
    return (std::hash<std::string>()(std::get<1>(key)) * 31 + std::get<0>(key)) * 31 + std::get<2>(key);
}

} // namespace zn::materials
