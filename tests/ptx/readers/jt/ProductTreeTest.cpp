#include "tests/ptx/readers/jt/ProductTreeRun.h"

#include "ptx/readers/jt/JtFile.h"

#include <gmock/gmock.h>

using namespace jttest;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace
{

constexpr std::array<float, 4> Red = {0.8f, 0.1f, 0.2f, 1};
constexpr std::array<float, 4> Blue = {0.1f, 0.2f, 0.9f, 0.5f};

std::vector<float> moveOf(const ptx::model::Occurrence& occurrence)
{
    return {occurrence.placement[12], occurrence.placement[13], occurrence.placement[14]};
}

} // namespace

TEST_F(JtStructure, APartThatIsUsedTwiceIsOneProductInTwoPlaces)
{
    FileWriter writer = assembly({2, 3});
    writer.instance(2, 4, {{20}});
    writer.instance(3, 4, {{21}});
    writer.part(4, {5});
    writer.triangle(5, 7);
    writer.move(20, 10, 20, 30);
    writer.move(21, -1, -2, -3);
    const ptx::model::Model model = read(writer);
    ASSERT_EQ(model.roots.size(), 1u);
    EXPECT_EQ(model.products.size(), 2u);
    EXPECT_EQ(model.bodies.size(), 1u);
    ASSERT_EQ(top(model).children.size(), 2u);
    EXPECT_THAT(moveOf(top(model).children[0]), ElementsAre(10, 20, 30));
    EXPECT_THAT(moveOf(top(model).children[1]), ElementsAre(-1, -2, -3));
    EXPECT_EQ(top(model).children[0].product, top(model).children[1].product);
    EXPECT_EQ(legOf(model, top(model).children[0].product), 7);
    EXPECT_FALSE(hasWarnings());
}

TEST_F(JtStructure, AnInstanceLendsNamePlaceColourAndTags)
{
    FileWriter writer = assembly({2, 3});
    writer.instance(2, 4, {{20, 22}});
    writer.instance(3, 4);
    writer.part(4, {5}, {{21}});
    writer.triangle(5, 7);
    writer.material(20, Red);
    writer.move(21, 0, 0, 4);
    writer.move(22, 1, 0, 0);
    writer.property(2, "JT_PROP_NAME", "left wheel;1;2:");
    writer.property(2, "LAYER::", "12");
    writer.property(4, "JT_PROP_NAME", "wheel.part;1;0:");
    const ptx::model::Model model = read(writer);
    ASSERT_EQ(top(model).children.size(), 2u);
    const ptx::model::Occurrence& left = top(model).children[0];
    EXPECT_EQ(left.name, "left wheel");
    EXPECT_THAT(left.tags, ElementsAre("ptx::layer=12"));
    EXPECT_THAT(moveOf(left), ElementsAre(1, 0, 4));
    EXPECT_EQ(model.products[left.product].name, "wheel");
    ASSERT_NE(model.products[left.product].appearance, ptx::model::NoAppearance);
    EXPECT_FLOAT_EQ(model.appearances[model.products[left.product].appearance].red, 0.8f);

    const ptx::model::Occurrence& right = top(model).children[1];
    EXPECT_EQ(right.name, "");
    EXPECT_THAT(right.tags, IsEmpty());
    EXPECT_EQ(model.products[right.product].appearance, ptx::model::NoAppearance);
    // Another colour takes a product of its own, but no second mesh.
    EXPECT_NE(right.product, left.product);
    EXPECT_EQ(model.products[right.product].body, model.products[left.product].body);
    EXPECT_EQ(model.bodies.size(), 1u);
}

TEST_F(JtStructure, InstancesOfInstancesAddUpFromTheInside)
{
    FileWriter writer = assembly({2});
    writer.instance(2, 3, {{20}});
    writer.instance(3, 4, {{21}});
    writer.part(4, {5});
    writer.triangle(5, 1);
    writer.transform(20, {{0, 2}, {5, 2}, {10, 2}});
    writer.move(21, 1, 2, 3);
    writer.property(3, "JT_PROP_NAME", "inner");
    const ptx::model::Model model = read(writer);
    ASSERT_EQ(top(model).children.size(), 1u);
    EXPECT_THAT(moveOf(top(model).children[0]), ElementsAre(2, 4, 6));
    EXPECT_EQ(top(model).children[0].placement[0], 2);
    EXPECT_EQ(top(model).children[0].name, "inner");
}

TEST_F(JtStructure, TheLowerOfTwoColoursCountsAndOfOneNodeTheLast)
{
    FileWriter writer = assembly({4});
    writer.part(4, {5, 6}, {{20}});
    writer.triangle(5, 1, {{20, 21}});
    writer.triangle(6, 2);
    writer.material(20, Red);
    writer.material(21, Blue);
    const ptx::model::Model model = read(writer);
    const ptx::model::Product& part = model.products.at(top(model).children.at(0).product);
    const ptx::model::Body& body = model.bodies.at(part.body);
    ASSERT_EQ(body.pieces.size(), 2u);
    EXPECT_EQ(body.pieces[0].appearance, ptx::model::NoAppearance);
    EXPECT_FLOAT_EQ(model.appearances[part.appearance].red, 0.8f);
    EXPECT_FLOAT_EQ(model.appearances[body.pieces[1].appearance].blue, 0.9f);
    EXPECT_FLOAT_EQ(model.appearances[body.pieces[1].appearance].alpha, 0.5f);
}

TEST_F(JtStructure, IgnoredNodesAreNotVisibleAndIgnoredShapesAreLeftOut)
{
    FileWriter writer = assembly({2, 3, 4});
    writer.part(2, {10}, {{}, true});
    writer.instance(3, 5, {{}, true});
    writer.part(4, {11, 12});
    writer.part(5, {10});
    writer.triangle(10, 4);
    writer.triangle(11, 6, {{}, true});
    writer.triangle(12, 8);
    const ptx::model::Model model = read(writer);
    ASSERT_EQ(top(model).children.size(), 3u);
    EXPECT_FALSE(top(model).children[0].isVisible);
    EXPECT_FALSE(top(model).children[1].isVisible);
    EXPECT_TRUE(top(model).children[2].isVisible);
    EXPECT_EQ(legOf(model, top(model).children[1].product), 4);
    EXPECT_EQ(legOf(model, top(model).children[2].product), 8);
}

TEST_F(JtStructure, LengthsBecomeMillimetresByTheUnitOfTheTopAlone)
{
    FileWriter writer;
    writer.partition(0, {1});
    writer.metadata(1, {2});
    writer.property(1, "JT_PROP_MEASUREMENT_UNITS::", "INCHES");
    writer.instance(2, 3, {{20}});
    writer.part(3, {4});
    writer.property(3, "JT_PROP_MEASUREMENT_UNITS", "Millimeters");
    writer.triangle(4, 10);
    writer.transform(20, {{0, 0.5}, {5, 0.5}, {10, 0.5}, {12, 2}});
    const ptx::model::Model model = read(writer);
    EXPECT_THAT(model.tags, Contains("ptx::unit=INCHES"));
    const ptx::model::Occurrence& occurrence = top(model).children.at(0);
    EXPECT_FLOAT_EQ(occurrence.placement[12], 50.8f);
    EXPECT_EQ(occurrence.placement[0], 0.5f);
    EXPECT_FLOAT_EQ(legOf(model, occurrence.product), 254);
}

TEST_F(JtStructure, AFileWithoutAUnitTakesTheSettingAndWarns)
{
    FileWriter writer;
    writer.partition(0, {3});
    writer.part(3, {4});
    writer.property(3, "JT_PROP_MEASUREMENT_UNITS", "Unknown");
    writer.triangle(4, 10);
    const ptx::model::Model model = read(writer, {"mesh.unit=1000"});
    EXPECT_FLOAT_EQ(legOf(model, model.roots.at(0).product), 10000);
    EXPECT_THAT(log(), HasSubstr("Warning: the file names no unit of length"));
}

TEST_F(JtStructure, NamesLoseTheirTailAndAPartWithoutOneIsCalledAsWhatUsesIt)
{
    FileWriter writer = assembly({2, 3});
    writer.instance(2, 4);
    writer.property(2, "JT_PROP_NAME", "bolt M6.part;-1;0:");
    writer.part(4, {10});
    writer.group(3, {5});
    writer.property(3, "Name::", "frame");
    writer.part(5, {10});
    writer.triangle(10, 1);
    const ptx::model::Model model = read(writer);
    EXPECT_EQ(top(model).name, "top");
    EXPECT_EQ(top(model).children.at(0).name, "bolt M6");
    EXPECT_EQ(model.products[top(model).children[0].product].name, "bolt M6");
    const ptx::model::Product& frame = model.products[top(model).children.at(1).product];
    EXPECT_EQ(frame.name, "frame");
    EXPECT_EQ(model.products[frame.children.at(0).product].name, "frame");
}

TEST_F(JtStructure, PropertiesForUsersAndLayersBecomeTags)
{
    FileWriter writer = assembly({2});
    writer.part(2, {3});
    writer.triangle(3, 1);
    writer.metadataSegment(1, {{"LAYERFILTER000::", "ALL=1,2,3"}, {"Internal", "x"}, {"Supplier::", "Acme"}});
    writer.property(2, "LAYER::", "7");
    writer.property(2, "CAD_MASS::", "3.5");
    writer.property(2, "SUBNODE", "1");
    const ptx::model::Model model = read(writer);
    EXPECT_THAT(top(model).tags,
                ElementsAre("ptx::attribute::LAYERFILTER000=ALL=1,2,3", "ptx::attribute::Supplier=Acme"));
    EXPECT_THAT(model.products[top(model).children.at(0).product].tags,
                ElementsAre("ptx::layer=7", "ptx::attribute::CAD_MASS=3.5"));
}

TEST_F(JtStructure, MetadataSegmentsOfEveryLayoutAreRead)
{
    for (const int major : {8, 9, 10})
        for (const bool isBigEndian : {false, true}) {
            FileWriter writer(major, isBigEndian);
            writer.partition(0, {});
            writer.metadataSegment(0, {{"Supplier::", "Acme"}, {"Weight", "12"}});
            const ptx::core::Outcome<ptx::jt::JtFile> file = ptx::jt::openJtFile("a.jt", writer.file());
            ASSERT_TRUE(file) << file.failure().message;
            EXPECT_EQ(file.value().framing.isBigEndian, isBigEndian);
            EXPECT_EQ(file.value().framing.segments.size(), 2u);
            EXPECT_THAT(file.value().graph.nodes.at(0).properties,
                        ElementsAre(testing::Pair("Supplier::", "Acme"), testing::Pair("Weight", "12")));
            EXPECT_THAT(file.value().graph.warnings, IsEmpty());
        }
}

TEST_F(JtStructure, ReferencesThatLeadNowhereAreLeftOut)
{
    FileWriter writer = assembly({77, 2, 3});
    writer.instance(2, 78);
    writer.part(3, {79, 4});
    writer.triangle(4, 2, {{80}});
    const ptx::model::Model model = read(writer);
    ASSERT_EQ(top(model).children.size(), 1u);
    EXPECT_EQ(legOf(model, top(model).children[0].product), 2);
}
