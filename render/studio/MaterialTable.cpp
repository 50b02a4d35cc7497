#include "render/studio/MaterialTable.h"

#include "render/studio/TextureImages.h"
#include "scene/ColorSpace.h"
#include "scene/MaterialLook.h"

#include <QCoreApplication>

#include <algorithm>
#include <cmath>

namespace render::studio
{

namespace
{

constexpr float mostEmission = 1e6f;

Eigen::Vector3f lightOf(const osg::Color3f& display)
{
    const osg::Color3f light = osg::linearFromDisplay(display);
    return {light.red, light.green, light.blue};
}

float within(float value, float least, float most, float otherwise)
{
    return std::isfinite(value) ? std::clamp(value, least, most) : otherwise;
}

osg::Color3f colorWithin(const osg::Color3f& color, float most)
{
    return {within(color.red, 0, most, 0), within(color.green, 0, most, 0), within(color.blue, 0, most, 0)};
}

bool hasColors(osg::TextureSlot slot)
{
    return slot == osg::TextureSlot::BaseColor || slot == osg::TextureSlot::Emission ||
           slot == osg::TextureSlot::SpecularColor;
}

/// Sheen is not drawn.
bool isDrawn(osg::TextureSlot slot)
{
    return slot != osg::TextureSlot::SheenColor && slot != osg::TextureSlot::SheenRoughness;
}

osg::PhysicalSurface tamed(osg::PhysicalSurface surface)
{
    surface.metalness = within(surface.metalness, 0, 1, 0);
    surface.roughness = within(surface.roughness, 0, 1, 1);
    surface.opacity = within(surface.opacity, 0, 1, 1);
    surface.alphaCutoff = within(surface.alphaCutoff, 0, 2, 0.5f);
    surface.emissionStrength = within(surface.emissionStrength, 0, mostEmission, 1);
    surface.transmission = within(surface.transmission, 0, 1, 0);
    surface.refraction = surface.refraction == 0 ? 0 : within(surface.refraction, 1, 100, 1.5f);
    surface.clearcoat = within(surface.clearcoat, 0, 1, 0);
    surface.clearcoatRoughness = within(surface.clearcoatRoughness, 0, 1, 0);
    surface.specular = within(surface.specular, 0, 1, 1);
    surface.specularColor = colorWithin(surface.specularColor, mostEmission);
    return surface;
}

class Maker
{
public:
    explicit Maker(std::size_t mostPixels) : m_images(mostPixels) {}

    StudioMaterial make(const osg::MaterialPtr& material)
    {
        StudioMaterial result;
        const std::optional<osg::SurfaceLook> look = osg::lookOf(material);
        result.surface = tamed(osg::surfaceOf(material));
        result.isGiven = look.has_value();
        if (look) {
            result.baseColor = lightOf(look->diffuse).cwiseMin(1.0f);
            result.emission = lightOf(look->emission).cwiseMin(mostEmission) * result.surface.emissionStrength;
        }
        const osg::Color3f& sheen = result.surface.sheenColor;
        if (std::max({sheen.red, sheen.green, sheen.blue}) > 0)
            ++m_sheens;
        for (const auto& [slot, texture] : result.surface.textures)
            if (isDrawn(slot))
                add(result, slot, texture);
        result.surface.textures.clear();
        return result;
    }

    QStringList warnings() const
    {
        QStringList result = m_images.warnings();
        if (m_sheens > 0)
            result << QCoreApplication::translate("Textures", "The sheen of %n material(s) is not drawn", nullptr,
                                                  m_sheens);
        return result;
    }

private:
    void add(StudioMaterial& material, osg::TextureSlot slot, const osg::Texture& texture)
    {
        if (const std::shared_ptr<const MipMap> picture = pictureOf(texture.image, hasColors(slot)))
            material.textures[std::size_t(slot)].emplace(picture, texture);
    }

    std::shared_ptr<const MipMap> pictureOf(const osg::EncodedImagePtr& image, bool withColors)
    {
        const QImage& decoded = m_images.decoded(image);
        if (decoded.isNull())
            return nullptr;
        std::shared_ptr<const MipMap>& picture = m_pictures[{image, withColors}];
        if (!picture)
            picture = std::make_shared<MipMap>(decoded, withColors);
        return picture;
    }

    TextureImages m_images;
    std::map<std::pair<osg::EncodedImagePtr, bool>, std::shared_ptr<const MipMap>> m_pictures;
    int m_sheens = 0;
};

} // namespace

MaterialTable::MaterialTable(const geometry::rays::PartList& list, std::size_t mostTexturePixels)
{
    Maker maker(mostTexturePixels);
    for (const geometry::rays::Part& part : list.parts) {
        const auto [entry, isNew] = m_materials.try_emplace(part.material.get());
        if (isNew)
            entry->second = maker.make(part.material);
        m_ofParts.push_back(&entry->second);
    }
    m_warnings = maker.warnings();
}

} // namespace render::studio
