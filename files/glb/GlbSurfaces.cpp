#include "files/glb/GlbSurfaces.h"

#include "files/glb/GlbNumbers.h"

namespace files::glb
{

namespace
{

using Slot = osg::TextureSlot;

constexpr float largestFactor = 1e6f;

Json linear(const osg::Color3f& color)
{
    return {linearShare(color.red), linearShare(color.green), linearShare(color.blue)};
}

/// 0 as a whole number, which is how most factors are.
Json factor(float value)
{
    return value == 0 ? Json(0) : Json(value);
}

/// `value` between `least` and what JSON can hold.
float bounded(float value, float least)
{
    return std::isfinite(value) ? std::clamp(value, least, largestFactor) : least;
}

/// Builds the members one after the other.
class SurfaceText
{
public:
    SurfaceText(const osg::PhysicalSurface& surface, unsigned sets, GlbTextures& textures)
        : m_surface(surface), m_sets(sets), m_textures(textures)
    {
    }

    Json& json() { return m_json; }
    void addBase(const osg::Color3f& base);
    void addAlpha();
    void addTextures();
    void addCoats();
    void addReflection();

private:
    /// Adds `key` to `object` when the slot has a texture; `strengthKey` may be null.
    void add(Json& object, const char* key, Slot slot, const char* strengthKey = nullptr);
    /// Adds the extension unless there is nothing in it.
    void addExtension(const char* name, Json&& content);

    const osg::PhysicalSurface& m_surface;
    unsigned m_sets;
    GlbTextures& m_textures;
    Json m_json = Json::object();
};

void SurfaceText::add(Json& object, const char* key, Slot slot, const char* strengthKey)
{
    const auto found = m_surface.textures.find(slot);
    if (found == m_surface.textures.end() || !(m_sets >> found->second.set & 1))
        return;
    std::optional<Json> info = m_textures.info(found->second);
    if (!info)
        return;
    if (strengthKey && found->second.strength != 1)
        (*info)[strengthKey] = found->second.strength;
    object[key] = *std::move(info);
}

void SurfaceText::addExtension(const char* name, Json&& content)
{
    if (!content.empty())
        m_json["extensions"][name] = std::move(content);
}

void SurfaceText::addBase(const osg::Color3f& base)
{
    Json& surface = m_json["pbrMetallicRoughness"];
    surface["baseColorFactor"] = linear(base);
    surface["baseColorFactor"].push_back(sixDigits(share(m_surface.opacity)));
    surface["metallicFactor"] = factor(share(m_surface.metalness));
    surface["roughnessFactor"] = factor(share(m_surface.roughness));
    add(surface, "baseColorTexture", Slot::BaseColor);
    add(surface, "metallicRoughnessTexture", Slot::MetallicRoughness);
}

void SurfaceText::addAlpha()
{
    if (m_surface.alphaMode == osg::AlphaMode::Blend)
        m_json["alphaMode"] = "BLEND";
    if (m_surface.alphaMode == osg::AlphaMode::Mask) {
        m_json["alphaMode"] = "MASK";
        if (m_surface.alphaCutoff != 0.5f)
            m_json["alphaCutoff"] = bounded(m_surface.alphaCutoff, 0);
    }
    if (m_surface.doubleSided)
        m_json["doubleSided"] = true;
}

void SurfaceText::addTextures()
{
    add(m_json, "normalTexture", Slot::Normal, "scale");
    add(m_json, "occlusionTexture", Slot::Occlusion, "strength");
    add(m_json, "emissiveTexture", Slot::Emission);
}

void SurfaceText::addCoats()
{
    Json coat = Json::object();
    if (m_surface.clearcoat != 0)
        coat["clearcoatFactor"] = share(m_surface.clearcoat);
    if (m_surface.clearcoatRoughness != 0)
        coat["clearcoatRoughnessFactor"] = share(m_surface.clearcoatRoughness);
    add(coat, "clearcoatTexture", Slot::Clearcoat);
    add(coat, "clearcoatRoughnessTexture", Slot::ClearcoatRoughness);
    add(coat, "clearcoatNormalTexture", Slot::ClearcoatNormal, "scale");
    addExtension("KHR_materials_clearcoat", std::move(coat));
    Json sheen = Json::object();
    if (m_surface.sheenColor != osg::Color3f())
        sheen["sheenColorFactor"] = {share(m_surface.sheenColor.red), share(m_surface.sheenColor.green),
                                     share(m_surface.sheenColor.blue)};
    if (m_surface.sheenRoughness != 0)
        sheen["sheenRoughnessFactor"] = share(m_surface.sheenRoughness);
    add(sheen, "sheenColorTexture", Slot::SheenColor);
    add(sheen, "sheenRoughnessTexture", Slot::SheenRoughness);
    addExtension("KHR_materials_sheen", std::move(sheen));
}

void SurfaceText::addReflection()
{
    Json specular = Json::object();
    if (m_surface.specular != 1)
        specular["specularFactor"] = factor(share(m_surface.specular));
    if (m_surface.specularColor != osg::Color3f{1, 1, 1})
        specular["specularColorFactor"] = {bounded(m_surface.specularColor.red, 0),
                                           bounded(m_surface.specularColor.green, 0),
                                           bounded(m_surface.specularColor.blue, 0)};
    add(specular, "specularTexture", Slot::Specular);
    add(specular, "specularColorTexture", Slot::SpecularColor);
    addExtension("KHR_materials_specular", std::move(specular));
    Json transmission = Json::object();
    if (m_surface.transmission != 0)
        transmission["transmissionFactor"] = share(m_surface.transmission);
    add(transmission, "transmissionTexture", Slot::Transmission);
    addExtension("KHR_materials_transmission", std::move(transmission));
    if (m_surface.refraction != 1.5f)
        addExtension("KHR_materials_ior",
                     {{"ior", m_surface.refraction == 0 ? Json(0) : Json(bounded(m_surface.refraction, 1))}});
    if (m_surface.emissionStrength != 1)
        addExtension("KHR_materials_emissive_strength",
                     {{"emissiveStrength", factor(bounded(m_surface.emissionStrength, 0))}});
    if (m_surface.unlit)
        m_json["extensions"]["KHR_materials_unlit"] = Json::object();
}

} // namespace

Json surfaceJson(const osg::PhysicalSurface& surface, const osg::Color3f& base, const osg::Color3f& emission,
                 unsigned sets, GlbTextures& textures, std::set<std::string>& extensions)
{
    SurfaceText text(surface, sets, textures);
    text.addBase(base);
    if (emission != osg::Color3f())
        text.json()["emissiveFactor"] = linear(emission);
    text.addAlpha();
    text.addTextures();
    text.addCoats();
    text.addReflection();
    Json json = std::move(text.json());
    if (json.contains("extensions"))
        for (const auto& [name, content] : json["extensions"].items())
            extensions.insert(name);
    return json;
}

unsigned setsOf(const osg::PhysicalSurface& surface)
{
    unsigned sets = 0;
    for (const auto& [slot, texture] : surface.textures)
        sets |= 1u << texture.set;
    return sets;
}

} // namespace files::glb
