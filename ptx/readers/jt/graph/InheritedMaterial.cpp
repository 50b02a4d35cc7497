#include "ptx/readers/jt/graph/InheritedMaterial.h"

namespace ptx::jt::graph
{

namespace
{

constexpr model::Appearance Opaque = {0, 0, 0, 1};

// An alpha alone says nothing where there is no colour.
int mixed(int appearance, const codec::Colour& diffuse, unsigned fields, model::AppearanceTable& appearances)
{
    const bool isNew = appearance == model::NoAppearance;
    if (isNew && !(fields & ColourField))
        return model::NoAppearance;
    model::Appearance look = isNew ? Opaque : appearances[appearance];
    if (fields & ColourField)
        look = {diffuse[0], diffuse[1], diffuse[2], look.alpha};
    if (fields & AlphaField)
        look.alpha = diffuse[3];
    return appearances.indexOf(look);
}

InheritedMaterial changed(InheritedMaterial inherited, const Material& material, model::AppearanceTable& appearances)
{
    const unsigned fields = material.given & (material.isForced ? AllFields : ~inherited.final);
    inherited.appearance = mixed(inherited.appearance, material.diffuse, fields, appearances);
    if (fields & VertexColourField)
        inherited.hidesVertexColours = material.hidesVertexColours;
    inherited.final |= material.final & fields;
    return inherited;
}

} // namespace

InheritedMaterial inheritedMaterial(const SceneGraph& graph, const SceneNode& node, const InheritedMaterial& around,
                                    model::AppearanceTable& appearances)
{
    InheritedMaterial inherited = around;
    for (const Id id : node.attributes)
        if (const auto at = graph.attributes.find(id); at != graph.attributes.end() && at->second.material)
            inherited = changed(inherited, *at->second.material, appearances);
    return inherited;
}

} // namespace ptx::jt::graph
