#include "files/vrml/VrmlMaterials.h"

#include "files/SceneBuilding.h"
#include "files/vrml/VrmlGeometry.h"
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

MaterialLook lookOf(const Node& material, Painted painted)
{
    MaterialLook look;
    look.diffuse = colorOf(material, "diffuseColor", look.diffuse);
    look.emission = colorOf(material, "emissiveColor", look.emission);
    look.specular = colorOf(material, "specularColor", look.specular);
    look.shininess = std::clamp(material.number("shininess", 0.2f), 0.0f, 1.0f) * largestExponent;
    look.transparency = std::clamp(material.number("transparency", 0), 0.0f, 1.0f);
    if (painted == Painted::AsLines)
        look.diffuse = look.emission;
    if (painted == Painted::ByColors)
        look.diffuse = {1, 1, 1};
    const float ambient = std::clamp(material.number("ambientIntensity", 0.2f), 0.0f, 1.0f);
    look.ambient = {look.diffuse.red * ambient, look.diffuse.green * ambient, look.diffuse.blue * ambient};
    return look;
}

} // namespace

osg::MaterialPtr Materials::get(const Node* appearance, Painted painted)
{
    const Node* material = below(appearance, "material", NodeKind::Material);
    const Node* texture = below(appearance, "texture", NodeKind::ImageTexture);
    if (!material && !texture)
        return {};
    const auto [entry, isNew] = m_made.try_emplace({material, texture, painted});
    if (isNew) {
        const bool hasName = material && !material->name.empty();
        entry->second = makeMaterial(hasName ? material->name : appearance->name,
                                     material ? lookOf(*material, painted) : MaterialLook());
        if (texture && !texture->strings("url").empty())
            osg::setTags(entry->second.get(), {"texture=" + texture->strings("url").front()});
    }
    return entry->second.get();
}

} // namespace files::vrml
