#include "ptx/readers/jt/graph/InheritedMaterial.h"

#include <gtest/gtest.h>

using namespace ptx::jt::codec;
using namespace ptx::jt::graph;

namespace
{

/// What materials of one node after another come to.
InheritedMaterial inheritedMaterial(const std::vector<Material>& materials, ptx::model::AppearanceTable& appearances)
{
    InheritedMaterial inherited;
    for (const Material& material : materials) {
        SceneGraph graph;
        graph.attributes[5].material = material;
        SceneNode node;
        node.attributes = {5};
        inherited = ptx::jt::graph::inheritedMaterial(graph, node, inherited, appearances);
    }
    return inherited;
}

osg::Color4f colourOf(const std::vector<Material>& materials)
{
    ptx::model::AppearanceTable appearances;
    const int appearance = inheritedMaterial(materials, appearances).appearance;
    return appearance == ptx::model::NoAppearance ? osg::Color4f{-1, -1, -1, -1} : appearances[appearance];
}

constexpr Colour Orange = {0.75f, 0.5f, 0.25f, 1};
constexpr Colour ClearBlue = {0.125f, 0.25f, 0.875f, 0.5f};

} // namespace

TEST(JtInheritedMaterial, InhibitedFieldsKeepWhatIsInherited)
{
    EXPECT_EQ(colourOf({{Orange}, {ClearBlue}}), (osg::Color4f{0.125f, 0.25f, 0.875f, 0.5f}));
    EXPECT_EQ(colourOf({{Orange}, {ClearBlue, false, ColourField}}), (osg::Color4f{0.125f, 0.25f, 0.875f, 1}));
    EXPECT_EQ(colourOf({{Orange}, {ClearBlue, false, AlphaField}}), (osg::Color4f{0.75f, 0.5f, 0.25f, 0.5f}));
    EXPECT_EQ(colourOf({{Orange}, {ClearBlue, false, VertexColourField}}), (osg::Color4f{0.75f, 0.5f, 0.25f, 1}));
    EXPECT_EQ(colourOf({{ClearBlue, false, AlphaField}}), (osg::Color4f{-1, -1, -1, -1}));
}

TEST(JtInheritedMaterial, FinalFieldsChangeByForceAlone)
{
    const Material final = {Orange, false, AllFields, AllFields};
    const Material finalColour = {Orange, false, AllFields, ColourField};
    const Material forced = {ClearBlue, false, AllFields, 0, true};
    EXPECT_EQ(colourOf({final, {ClearBlue}}), (osg::Color4f{0.75f, 0.5f, 0.25f, 1}));
    EXPECT_EQ(colourOf({final, forced}), (osg::Color4f{0.125f, 0.25f, 0.875f, 0.5f}));
    EXPECT_EQ(colourOf({finalColour, {ClearBlue}}), (osg::Color4f{0.75f, 0.5f, 0.25f, 0.5f}));
}

TEST(JtInheritedMaterial, HidingOfVertexColoursIsInheritedToo)
{
    ptx::model::AppearanceTable appearances;
    const Material hiding = {Orange, true};
    const Material showing = {ClearBlue, false};
    const Material keeping = {ClearBlue, false, ColourField | AlphaField};
    EXPECT_TRUE(inheritedMaterial({hiding, keeping}, appearances).hidesVertexColours);
    EXPECT_FALSE(inheritedMaterial({hiding, showing}, appearances).hidesVertexColours);
}
