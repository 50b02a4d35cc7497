#include "files/vrml/VrmlMaterials.h"

#include "files/SceneBuilding.h"
#include "files/vrml/VrmlGeometry.h"
#include "scene/MaterialLook.h"
#include "scene/Tags.h"

#include <algorithm>

namespace files::vrml
{

namespace
{

/// The exponent of the highlight that the shininess 1 stands for.
constexpr float largestExponent = 128;

const Node* below(const Node* node, std::string_view field, NodeKind kind)
{
    const Node* found = node ? node->node(field) : nullptr;
    return found && found->kind() == kind ? found : nullptr;
}

osg::Color3f colorOf(const Node& material, std::string_view field, const osg::Color3f& otherwise)
{
    const std::span<const float> numbers = material.floats(field);
    if (numbers.size() < 3)
        return otherwise;
    const auto bounded = [](float channel) { return std::clamp(channel, 0.0f, 1.0f); };
    return {bounded(numbers[0]), bounded(numbers[1]), bounded(numbers[2])};
}

bool isWhite(const AppearanceTexture* texture, Painted painted)
{
    return painted == Painted::ByColors || (texture && texture->hasColors());
}

/// The look of a Material node, by the lighting model of VRML97: colours of a picture stand instead of the diffuse
/// colour and of the colours of the mesh, its grey is multiplied by them; alpha stands instead of the transparency.
MaterialLook lookOf(const Node& material, const AppearanceTexture* texture, Painted painted)
{
    MaterialLook look;
    look.diffuse = colorOf(material, "diffuseColor", look.diffuse);
    look.emission = colorOf(material, "emissiveColor", look.emission);
    look.specular = colorOf(material, "specularColor", look.specular);
    look.shininess = std::clamp(material.number("shininess", 0.2f), 0.0f, 1.0f) * largestExponent;
    if (!texture || !texture->hasAlpha())
        look.transparency = std::clamp(material.number("transparency", 0), 0.0f, 1.0f);
    if (painted == Painted::AsLines)
        look.diffuse = look.emission;
    if (isWhite(texture, painted))
        look.diffuse = {1, 1, 1};
    const float ambient = std::clamp(material.number("ambientIntensity", 0.2f), 0.0f, 1.0f);
    look.ambient = {look.diffuse.red * ambient, look.diffuse.green * ambient, look.diffuse.blue * ambient};
    return look;
}

/// What has no Material node is not lit, and white.
MaterialLook unlitLook()
{
    MaterialLook look;
    look.diffuse = {1, 1, 1};
    return look;
}

MaterialLook texturedLook(const Node* material, const AppearanceTexture& texture, Painted painted)
{
    MaterialLook look = material ? lookOf(*material, &texture, painted) : unlitLook();
    osg::SurfaceLook plain;
    plain.shininess = look.shininess;
    plain.transparency = look.transparency;
    look.surface = osg::impliedSurface(plain);
    look.surface->unlit = !material;
    look.surface->textures[osg::TextureSlot::BaseColor] = texture.texture;
    if (texture.hasAlpha())
        look.surface->alphaMode = osg::AlphaMode::Blend;
    return look;
}

MaterialLook plainLook(const Node* material, Painted painted)
{
    return material ? lookOf(*material, nullptr, painted) : MaterialLook();
}

} // namespace

osg::MaterialPtr Materials::get(const Node* appearance, const AppearanceTexture* seen, Painted painted)
{
    const Node* material = below(appearance, "material", NodeKind::Material);
    const Node* texture = below(appearance, "texture", NodeKind::ImageTexture);
    if (!material && !texture && !seen)
        return {};
    const auto [entry, isNew] = m_made.try_emplace({material, texture, seen, painted});
    if (isNew) {
        const bool hasName = material && !material->name.empty();
        entry->second = makeMaterial(hasName ? material->name : appearance->name,
                                     seen ? texturedLook(material, *seen, painted) : plainLook(material, painted));
        if (texture && !texture->strings("url").empty())
            osg::setTags(entry->second.get(), {"texture=" + texture->strings("url").front()});
    }
    return entry->second.get();
}

} // namespace files::vrml
