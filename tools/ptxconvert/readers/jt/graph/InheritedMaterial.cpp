#include "tools/ptxconvert/readers/jt/graph/InheritedMaterial.h"

namespace ptx::jt
{

namespace
{

constexpr Appearance Opaque = {0, 0, 0, 1};

// An alpha alone says nothing where there is no colour.
int mixed(int appearance, const Colour& diffuse, unsigned fields, AppearanceTable& appearances)
{
    const bool isNew = appearance == NoAppearance;
    if (isNew && !(fields & ColourField))
        return NoAppearance;
    Appearance look = isNew ? Opaque : appearances[appearance];
    if (fields & ColourField)
        look = {diffuse[0], diffuse[1], diffuse[2], look.alpha};
    if (fields & AlphaField)
        look.alpha = diffuse[3];
    return appearances.indexOf(look);
}

Finish changed(Finish finish, const Material& material, AppearanceTable& appearances)
{
    const unsigned fields = material.given & (material.isForced ? AllFields : ~finish.final);
    finish.appearance = mixed(finish.appearance, material.diffuse, fields, appearances);
    if (fields & VertexColourField)
        finish.hidesVertexColours = material.hidesVertexColours;
    finish.final |= material.final & fields;
    return finish;
}

} // namespace

Finish finishOf(const SceneGraph& graph, const SceneNode& node, const Finish& around, AppearanceTable& appearances)
{
    Finish finish = around;
    for (const Id id : node.attributes)
        if (const auto at = graph.attributes.find(id); at != graph.attributes.end() && at->second.material)
            finish = changed(finish, *at->second.material, appearances);
    return finish;
}

} // namespace ptx::jt
