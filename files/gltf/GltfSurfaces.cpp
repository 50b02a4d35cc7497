#include "files/gltf/GltfSurfaces.h"

#include "files/gltf/JsonMembers.h"

#include <algorithm>
#include <array>
#include <map>
#include <string_view>

namespace files::gltf
{

namespace
{

using Json = nlohmann::json;
using osg::PhysicalSurface;
using Slot = osg::TextureSlot;

/// What a surface takes in memory with its textures, at most.
constexpr std::uint64_t memoryOfSurface = 4096;

constexpr std::array<std::string_view, 8> knownExtensions = {
    "KHR_materials_clearcoat",    "KHR_materials_emissive_strength",
    "KHR_materials_ior",          "KHR_materials_pbrSpecularGlossiness",
    "KHR_materials_sheen",        "KHR_materials_specular",
    "KHR_materials_transmission", "KHR_materials_unlit"};

osg::Color3f colorIn(const Json& object, const char* key, const osg::Color3f& otherwise)
{
    const Json& color = memberOf(object, key);
    const bool isColor = color.is_array() && color.size() == 3 &&
                         std::all_of(color.begin(), color.end(), [](const Json& value) { return value.is_number(); });
    return isColor ? osg::Color3f{color[0].get<float>(), color[1].get<float>(), color[2].get<float>()} : otherwise;
}

/// Reads one material.
class SurfaceReading
{
public:
    SurfaceReading(const Json& material, GltfTextures& textures, const QString& place)
        : m_material(material), m_textures(textures), m_place(place)
    {
    }

    PhysicalSurface read(ReadTask& task);

private:
    const Json& extension(const char* name) const { return memberOf(memberOf(m_material, "extensions"), name); }
    osg::Texture* takeTexture(Slot slot, const Json& object, const char* key);
    void readBase();
    void readAlpha();
    void readGlossiness(const Json& glossiness, ReadTask& task);
    void readExtensions();
    void readCoats();

    const Json& m_material;
    GltfTextures& m_textures;
    QString m_place;
    PhysicalSurface m_surface;
};

/// Null when there is no such texture.
osg::Texture* SurfaceReading::takeTexture(Slot slot, const Json& object, const char* key)
{
    const Json& info = memberOf(object, key);
    if (!info.is_object())
        return nullptr;
    auto texture = m_textures.texture(info, m_place + QLatin1Char('/') + QLatin1String(key));
    return texture ? &(m_surface.textures[slot] = *std::move(texture)) : nullptr;
}

PhysicalSurface SurfaceReading::read(ReadTask& task)
{
    if (const Json& glossiness = extension("KHR_materials_pbrSpecularGlossiness"); glossiness.is_object())
        readGlossiness(glossiness, task);
    else
        readBase();
    readAlpha();
    if (osg::Texture* normal = takeTexture(Slot::Normal, m_material, "normalTexture"))
        normal->strength = numberIn(memberOf(m_material, "normalTexture"), "scale", 1);
    if (osg::Texture* occlusion = takeTexture(Slot::Occlusion, m_material, "occlusionTexture"))
        occlusion->strength = numberIn(memberOf(m_material, "occlusionTexture"), "strength", 1);
    takeTexture(Slot::Emission, m_material, "emissiveTexture");
    readExtensions();
    readCoats();
    return std::move(m_surface);
}

void SurfaceReading::readBase()
{
    const Json& base = memberOf(m_material, "pbrMetallicRoughness");
    m_surface.metalness = numberIn(base, "metallicFactor", 1);
    m_surface.roughness = numberIn(base, "roughnessFactor", 1);
    if (const Json& color = memberOf(base, "baseColorFactor"); color.is_array() && color.size() == 4)
        m_surface.opacity = color[3].is_number() ? color[3].get<float>() : 1;
    takeTexture(Slot::BaseColor, base, "baseColorTexture");
    takeTexture(Slot::MetallicRoughness, base, "metallicRoughnessTexture");
}

/// The older model: its diffuse colour is the base colour of what is no metal. Its picture of glossiness has no place.
void SurfaceReading::readGlossiness(const Json& glossiness, ReadTask& task)
{
    m_surface.metalness = 0;
    m_surface.roughness = 1 - numberIn(glossiness, "glossinessFactor", 1);
    if (const Json& color = memberOf(glossiness, "diffuseFactor"); color.is_array() && color.size() == 4)
        m_surface.opacity = color[3].is_number() ? color[3].get<float>() : 1;
    takeTexture(Slot::BaseColor, glossiness, "diffuseTexture");
    if (memberOf(glossiness, "specularGlossinessTexture").is_object())
        task.warn(tr("a texture of glossiness was left out; only metalness and roughness are read from textures"),
                  m_place);
}

void SurfaceReading::readAlpha()
{
    const std::string mode = textIn(m_material, "alphaMode");
    m_surface.alphaMode = mode == "BLEND"  ? osg::AlphaMode::Blend
                          : mode == "MASK" ? osg::AlphaMode::Mask
                                           : osg::AlphaMode::Opaque;
    if (m_surface.alphaMode == osg::AlphaMode::Mask)
        m_surface.alphaCutoff = numberIn(m_material, "alphaCutoff", 0.5f);
    const Json& doubleSided = memberOf(m_material, "doubleSided");
    m_surface.doubleSided = doubleSided.is_boolean() && doubleSided.get<bool>();
}

void SurfaceReading::readExtensions()
{
    m_surface.unlit = extension("KHR_materials_unlit").is_object();
    m_surface.emissionStrength = numberIn(extension("KHR_materials_emissive_strength"), "emissiveStrength", 1);
    m_surface.refraction = numberIn(extension("KHR_materials_ior"), "ior", 1.5f);
    const Json& transmission = extension("KHR_materials_transmission");
    m_surface.transmission = numberIn(transmission, "transmissionFactor", 0);
    takeTexture(Slot::Transmission, transmission, "transmissionTexture");
    const Json& specular = extension("KHR_materials_specular");
    m_surface.specular = numberIn(specular, "specularFactor", 1);
    m_surface.specularColor = colorIn(specular, "specularColorFactor", {1, 1, 1});
    takeTexture(Slot::Specular, specular, "specularTexture");
    takeTexture(Slot::SpecularColor, specular, "specularColorTexture");
}

void SurfaceReading::readCoats()
{
    const Json& coat = extension("KHR_materials_clearcoat");
    m_surface.clearcoat = numberIn(coat, "clearcoatFactor", 0);
    m_surface.clearcoatRoughness = numberIn(coat, "clearcoatRoughnessFactor", 0);
    takeTexture(Slot::Clearcoat, coat, "clearcoatTexture");
    takeTexture(Slot::ClearcoatRoughness, coat, "clearcoatRoughnessTexture");
    if (osg::Texture* normal = takeTexture(Slot::ClearcoatNormal, coat, "clearcoatNormalTexture"))
        normal->strength = numberIn(memberOf(coat, "clearcoatNormalTexture"), "scale", 1);
    const Json& sheen = extension("KHR_materials_sheen");
    m_surface.sheenColor = colorIn(sheen, "sheenColorFactor", {});
    m_surface.sheenRoughness = numberIn(sheen, "sheenRoughnessFactor", 0);
    takeTexture(Slot::SheenColor, sheen, "sheenColorTexture");
    takeTexture(Slot::SheenRoughness, sheen, "sheenRoughnessTexture");
}

void warnOfUnknown(const Json& materials, ReadTask& task)
{
    std::map<std::string, qulonglong> leftOut;
    for (const Json& material : materials)
        if (const Json& extensions = memberOf(material, "extensions"); extensions.is_object())
            for (const auto& [name, content] : extensions.items())
                if (std::find(knownExtensions.begin(), knownExtensions.end(), name) == knownExtensions.end())
                    ++leftOut[name];
    for (const auto& [name, count] : leftOut)
        task.warn(tr("%1 of %2 materials was left out").arg(QString::fromStdString(name)).arg(count));
}

} // namespace

std::vector<PhysicalSurface> readSurfaces(const Json& document, GltfTextures& textures, ReadTask& task)
{
    std::vector<PhysicalSurface> surfaces;
    const Json& materials = memberOf(document, "materials");
    if (!materials.is_array())
        return surfaces;
    task.takeMemory(materials.size() * memoryOfSurface);
    surfaces.reserve(materials.size());
    for (const Json& material : materials)
        surfaces.push_back(SurfaceReading(material, textures,
                                          QStringLiteral("/materials/%1").arg(static_cast<qulonglong>(surfaces.size())))
                               .read(task));
    warnOfUnknown(materials, task);
    return surfaces;
}

} // namespace files::gltf
