#include "files/scenefile/ConvertedTree.h"
#include "host/OSGSystem/Cast.h"
#include "host/znOpenSGExt/ExtReference.h"
#include "scene/Mesh.h"
#include "tests/roads/ptxconvert/ConvertRun.h"
#include "tests/support/StepText.h"

#include <gmock/gmock.h>

using namespace ptxtest;
using testing::ElementsAre;

namespace
{

void expectBox(const Measures& measures, osg::Vec3f low, osg::Vec3f high)
{
    EXPECT_FLOAT_EQ(measures.low.x, low.x);
    EXPECT_FLOAT_EQ(measures.low.y, low.y);
    EXPECT_FLOAT_EQ(measures.low.z, low.z);
    EXPECT_FLOAT_EQ(measures.high.x, high.x);
    EXPECT_FLOAT_EQ(measures.high.y, high.y);
    EXPECT_FLOAT_EQ(measures.high.z, high.z);
}

std::string unitCube(LengthUnit unit)
{
    StepText step(unit);
    StepProduct cube = step.product("cube");
    step.box(cube, {1, 1, 1}, {2, 2, 2});
    return step.text();
}

/// A box of 1 by 2 by 3, whose colour is orange.
struct OneBox {
    StepText step;
    StepProduct part = step.product("box");
    int style;

    OneBox()
    {
        step.box(part, {}, {1, 2, 3});
        style = step.color(part.solid, {1, 0.5, 0.25});
    }
};

} // namespace

TEST(ConvertStep, CubeOfOneInchMeasures25Point4Millimetres)
{
    ConvertRun run;
    ASSERT_EQ(run.convertText("cube.stp", unitCube(LengthUnit::Inch)), 0) << run.log();
    expectBox(measure(run.scene()), {25.4f, 25.4f, 25.4f}, {50.8f, 50.8f, 50.8f});
}

TEST(ConvertStep, CubeOfOneMetreMeasures1000Millimetres)
{
    ConvertRun run;
    ASSERT_EQ(run.convertText("cube.stp", unitCube(LengthUnit::Metre)), 0) << run.log();
    expectBox(measure(run.scene()), {1000, 1000, 1000}, {2000, 2000, 2000});
}

TEST(ConvertStep, CubeOfOneMillimetreMeasuresOne)
{
    ConvertRun run;
    ASSERT_EQ(run.convertText("cube.stp", unitCube(LengthUnit::Millimetre)), 0) << run.log();
    expectBox(measure(run.scene()), {1, 1, 1}, {2, 2, 2});
}

TEST(ConvertStep, RootRefersToTheCadFileAndBearsNothingElse)
{
    ConvertRun run;
    ASSERT_EQ(run.convertText("box.stp", OneBox().step.text()), 0);
    const osg::NodePtr root = run.scene();
    const auto core = osg::fcCast<osg::ExtReference>(root->getCore());
    ASSERT_TRUE(core);
    EXPECT_EQ(core->getState(), 2u);
    EXPECT_TRUE(core->isIdentity());
    EXPECT_EQ(core->getSourceFile()->getPath(), run.folder().file("box.stp"));
    EXPECT_TRUE(osg::scenefile::converted::isConvertedTree(root));
    EXPECT_FALSE(osg::scenefile::converted::isConvertedTree(root->getChild(0)));
    EXPECT_EQ(nameOf(root), "box.stp");
    EXPECT_EQ(root->getNChildren(), 1u);
}

TEST(ConvertStep, MeshIsClosedWithItsFrontOutside)
{
    ConvertRun run;
    ASSERT_EQ(run.convertText("box.stp", OneBox().step.text()), 0);
    const Measures measures = measure(run.scene());
    EXPECT_DOUBLE_EQ(measures.volume, 6);
    EXPECT_DOUBLE_EQ(measures.area, 22);
    EXPECT_EQ(measures.triangles, 12u);
}

TEST(ConvertStep, NormalsPointOutOfEachFaceAndFacesAreKeptAsRanges)
{
    ConvertRun run;
    ASSERT_EQ(run.convertText("box.stp", OneBox().step.text()), 0);
    const auto all = geometries(run.scene());
    ASSERT_EQ(all.size(), 1u);
    const osg::Mesh& mesh = osg::GeometryAccess::mesh(*all[0]);
    ASSERT_EQ(mesh.faces.size(), 6u);
    ASSERT_EQ(mesh.normals.size(), mesh.positions.size());
    for (std::size_t i = 0; i < mesh.positions.size(); ++i) {
        const osg::Vec3f& p = mesh.positions[i];
        const osg::Vec3f& n = mesh.normals[i];
        const float outward = (p.x - 0.5f) * n.x / 0.5f + (p.y - 1) * n.y + (p.z - 1.5f) * n.z / 1.5f;
        EXPECT_FLOAT_EQ(outward, 1) << i;
    }
}

TEST(ConvertStep, ColoursArriveAsDisplayColours)
{
    ConvertRun run;
    StepText step;
    StepProduct part = step.product("box");
    step.box(part, {}, {1, 2, 3});
    step.color(part.solid, {1, 0.5, 0.25}, 0.4);
    ASSERT_EQ(run.convertText("box.stp", step.text()), 0);
    const auto all = geometries(run.scene());
    ASSERT_EQ(all.size(), 1u);
    EXPECT_EQ(lookOf(all[0]).diffuse, (osg::Color3f{1, 0.5f, 0.25f}));
    EXPECT_FLOAT_EQ(lookOf(all[0]).transparency, 0.4f);
}

TEST(ConvertStep, FaceColourBeatsThatOfItsSolid)
{
    ConvertRun run;
    OneBox box;
    box.step.color(box.part.faces[5], {0, 0.75, 0});
    ASSERT_EQ(run.convertText("box.stp", box.step.text()), 0);
    const auto all = geometries(run.scene());
    ASSERT_EQ(all.size(), 2u) << "one geometry for each material";
    std::vector<std::pair<osg::Color3f, std::size_t>> seen;
    for (const osg::GeometryPtr& geometry : all)
        seen.emplace_back(lookOf(geometry).diffuse, osg::GeometryAccess::mesh(*geometry).faces.size());
    EXPECT_THAT(seen, testing::UnorderedElementsAre(std::pair(osg::Color3f{1, 0.5f, 0.25f}, std::size_t(5)),
                                                    std::pair(osg::Color3f{0, 0.75f, 0}, std::size_t(1))));
}

TEST(ConvertStep, SolidsOfOnePartKeepTheirColours)
{
    ConvertRun run;
    OneBox box;
    box.step.box(box.part, {10, 0, 0}, {11, 2, 3});
    box.step.color(box.part.solid, {0, 0, 0.5});
    ASSERT_EQ(run.convertText("box.stp", box.step.text()), 0);
    std::vector<osg::Color3f> seen;
    for (const osg::GeometryPtr& geometry : geometries(run.scene()))
        seen.push_back(lookOf(geometry).diffuse);
    EXPECT_THAT(seen, testing::UnorderedElementsAre(osg::Color3f{1, 0.5f, 0.25f}, osg::Color3f{0, 0, 0.5f}));
}

TEST(ConvertStep, PartUsedManyTimesIsOneMesh)
{
    ConvertRun run;
    OneBox box;
    const StepProduct top = box.step.product("top");
    box.step.place(top, box.part, "first", {10, 0, 0});
    box.step.place(top, box.part, "second", {20, 0, 0});
    box.step.place(top, box.part, "third", {0, 30, 0}, {0, 0, 1}, {0, 1, 0});
    ASSERT_EQ(run.convertText("asm.stp", box.step.text()), 0);
    const osg::NodePtr root = run.scene();
    const auto all = geometries(root);
    ASSERT_EQ(all.size(), 3u);
    EXPECT_EQ(all[0], all[1]);
    EXPECT_EQ(all[0], all[2]);
    expectBox(measure(nodeNamed(root, "first")), {10, 0, 0}, {11, 2, 3});
    expectBox(measure(nodeNamed(root, "second")), {20, 0, 0}, {21, 2, 3});
    expectBox(measure(nodeNamed(root, "third")), {-2, 30, 0}, {0, 31, 3});
}

TEST(ConvertStep, NestedPlacementsMultiply)
{
    ConvertRun run;
    OneBox box;
    const StepProduct sub = box.step.product("sub");
    const StepProduct top = box.step.product("top");
    box.step.place(sub, box.part, "inner", {10, 0, 0});
    box.step.place(top, sub, "outer", {100, 200, 300}, {0, 0, 1}, {0, 1, 0});
    ASSERT_EQ(run.convertText("asm.stp", box.step.text()), 0);
    expectBox(measure(run.scene()), {98, 210, 300}, {100, 211, 303});
    const osg::NodePtr outer = nodeNamed(run.scene(), "outer");
    const auto placed = osg::fcCast<osg::Transform3D>(outer->getCore());
    ASSERT_TRUE(placed);
    EXPECT_THAT(placed->getMatrix().values, ElementsAre(0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 1, 0, 100, 200, 300, 1));
}

TEST(ConvertStep, OccurrenceColourBeatsAllOthersAndSharesTheMesh)
{
    ConvertRun run;
    OneBox box;
    const StepProduct top = box.step.product("top");
    box.step.place(top, box.part, "plain", {10, 0, 0});
    const StepOccurrence painted = box.step.place(top, box.part, "painted", {20, 0, 0});
    box.step.overrideColor(painted, box.part, box.style, {0.125, 0, 0.75});
    ASSERT_EQ(run.convertText("asm.stp", box.step.text()), 0);
    const osg::NodePtr root = run.scene();
    const auto plain = geometries(nodeNamed(root, "plain"));
    const auto other = geometries(nodeNamed(root, "painted"));
    ASSERT_EQ(plain.size(), 1u);
    ASSERT_EQ(other.size(), 1u);
    EXPECT_EQ(lookOf(plain[0]).diffuse, (osg::Color3f{1, 0.5f, 0.25f}));
    EXPECT_EQ(lookOf(other[0]).diffuse, (osg::Color3f{0.125f, 0, 0.75f}));
    EXPECT_EQ(osg::GeometryAccess::mesh(*plain[0]).positions.data(),
              osg::GeometryAccess::mesh(*other[0]).positions.data());
}

TEST(ConvertStep, ColourOfADeepOccurrenceHoldsForThatPathAlone)
{
    ConvertRun run;
    OneBox box;
    const StepProduct sub = box.step.product("sub");
    const StepProduct top = box.step.product("top");
    const StepOccurrence inner = box.step.place(sub, box.part, "inner", {10, 0, 0});
    box.step.place(top, sub, "left", {});
    const StepOccurrence right = box.step.place(top, sub, "right", {0, 50, 0});
    box.step.overrideColor(top, right, inner, box.part, box.style, {0, 1, 0.5});
    ASSERT_EQ(run.convertText("asm.stp", box.step.text()), 0);
    const osg::NodePtr root = run.scene();
    EXPECT_EQ(lookOf(geometries(nodeNamed(root, "left")).at(0)).diffuse, (osg::Color3f{1, 0.5f, 0.25f}));
    EXPECT_EQ(lookOf(geometries(nodeNamed(root, "right")).at(0)).diffuse, (osg::Color3f{0, 1, 0.5f}));
}

TEST(ConvertStep, NamesOfEveryScriptSurvive)
{
    ConvertRun run;
    StepText step;
    StepProduct chinese = step.product("\\X2\\53D152A8673A\\X0\\");
    step.box(chinese, {}, {1, 2, 3});
    StepProduct umlaut = step.product("Geh\\X2\\00E4\\X0\\use");
    step.box(umlaut, {5, 0, 0}, {6, 1, 1});
    StepProduct plain = step.product("\xE9\xBD\xBF\xE8\xBD\xAE"); // UTF-8 as it stands
    step.box(plain, {9, 0, 0}, {10, 1, 1});
    ASSERT_EQ(run.convertText("names.stp", step.text()), 0);
    const osg::NodePtr root = run.scene();
    EXPECT_TRUE(nodeNamed(root, "\xE5\x8F\x91\xE5\x8A\xA8\xE6\x9C\xBA")); // fa dong ji
    EXPECT_TRUE(nodeNamed(root, "Geh\xC3\xA4use"));
    EXPECT_TRUE(nodeNamed(root, "\xE9\xBD\xBF\xE8\xBD\xAE")); // chi lun
}

TEST(ConvertStep, SameFileGivesTheSameBytes)
{
    ConvertRun first;
    ConvertRun second;
    const std::string path = first.folder().write("box.stp", OneBox().step.text());
    ASSERT_EQ(first.convert(path), 0);
    ASSERT_EQ(second.convert(path), 0);
    EXPECT_EQ(contentOf(first.output()), contentOf(second.output()));
}

TEST(ConvertStep, EntityThatCannotBeReadIsToldByItsNumber)
{
    ConvertRun run;
    std::string text = OneBox().step.text();
    const std::size_t plane = text.find("=PLANE(");
    const std::size_t line = text.rfind('#', plane);
    const std::size_t place = text.find('#', plane);
    text.replace(place, text.find(')', place) - place, "#99999");
    ASSERT_EQ(run.convertText("box.stp", text), 0) << run.log();
    EXPECT_THAT(run.log(), testing::HasSubstr("Warning: " + text.substr(line, plane - line) +
                                              " PLANE: A reference to another entity is unresolved"));
    EXPECT_EQ(measure(run.scene()).triangles, 10u) << "the other five faces";
}

TEST(ConvertStep, TessellatedGeometryOfNoProductEndsWith25)
{
    ConvertRun run;
    StepText step;
    step.product("part");
    step.add("COORDINATES_LIST('',3,((0.,0.,0.),(1.,0.,0.),(0.,1.,0.)))");
    step.add("TESSELLATED_SHAPE_REPRESENTATION('',(),#" + std::to_string(step.context()) + ")");
    EXPECT_EQ(run.convertText("part.stp", step.text()), 25);
    EXPECT_THAT(run.log(), testing::HasSubstr("the file is a STEP file, but it holds no solids"));
}

TEST(ConvertStep, ComplaintsOfOneKindAreToldOnceWithTheirNumber)
{
    ConvertRun run;
    std::string text = OneBox().step.text();
    for (std::size_t place = text.find("=VECTOR("); place != text.npos; place = text.find("=VECTOR(", place + 1))
        text.replace(place, 10, "=VECTOR($");
    run.convertText("box.stp", text);
    EXPECT_THAT(run.log(), testing::HasSubstr(" VECTOR: Parameter n0.1 (name) not a quoted String (and 11 more)"));
}
