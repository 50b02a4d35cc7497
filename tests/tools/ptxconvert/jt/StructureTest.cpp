#include "tests/tools/ptxconvert/jt/ReadRun.h"

#include "tools/ptxconvert/readers/jt/JtFile.h"

#include <gmock/gmock.h>

using namespace jttest;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

namespace
{

constexpr std::array<float, 4> Red = {0.8f, 0.1f, 0.2f, 1};
constexpr std::array<float, 4> Blue = {0.1f, 0.2f, 0.9f, 0.5f};

std::vector<float> moveOf(const ptx::Occurrence& occurrence)
{
    return {occurrence.placement[12], occurrence.placement[13], occurrence.placement[14]};
}

/// A file in millimetres whose root, the partition 0, leads to the metadata node 1.
FileWriter assembly(const Ids& children)
{
    FileWriter writer;
    writer.partition(0, {1});
    writer.metadata(1, children);
    writer.property(1, "JT_PROP_MEASUREMENT_UNITS", "Millimeters");
    writer.property(1, "JT_PROP_NAME", "top.asm;3;0:");
    return writer;
}

const ptx::Product& top(const ptx::Model& model)
{
    return model.products.at(model.roots.at(0).product);
}

class JtStructure : public testing::Test, protected ReadRun
{
};

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
    const ptx::Model model = read(writer);
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
    const ptx::Model model = read(writer);
    ASSERT_EQ(top(model).children.size(), 2u);
    const ptx::Occurrence& left = top(model).children[0];
    EXPECT_EQ(left.name, "left wheel");
    EXPECT_THAT(left.tags, ElementsAre("ptx::layer=12"));
    EXPECT_THAT(moveOf(left), ElementsAre(1, 0, 4));
    EXPECT_EQ(model.products[left.product].name, "wheel");
    ASSERT_NE(model.products[left.product].appearance, ptx::NoAppearance);
    EXPECT_FLOAT_EQ(model.appearances[model.products[left.product].appearance].red, 0.8f);

    const ptx::Occurrence& right = top(model).children[1];
    EXPECT_EQ(right.name, "");
    EXPECT_THAT(right.tags, IsEmpty());
    EXPECT_EQ(model.products[right.product].appearance, ptx::NoAppearance);
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
    const ptx::Model model = read(writer);
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
    const ptx::Model model = read(writer);
    const ptx::Product& part = model.products.at(top(model).children.at(0).product);
    const ptx::Body& body = model.bodies.at(part.body);
    ASSERT_EQ(body.pieces.size(), 2u);
    EXPECT_EQ(body.pieces[0].appearance, ptx::NoAppearance);
    EXPECT_FLOAT_EQ(model.appearances[part.appearance].red, 0.8f);
    EXPECT_FLOAT_EQ(model.appearances[body.pieces[1].appearance].blue, 0.9f);
    EXPECT_FLOAT_EQ(model.appearances[body.pieces[1].appearance].alpha, 0.5f);
}

TEST_F(JtStructure, OfASwitchTheSelectedChildIsTaken)
{
    FileWriter writer = assembly({2, 3, 4});
    writer.choice(2, {10, 11}, 1); // of parts
    writer.choice(3, {10, 11}, -1);
    writer.part(4, {6});
    writer.choice(6, {20, 21}, 1); // of shapes
    for (const Id id : {10, 11}) {
        writer.part(id, {id + 10});
        writer.triangle(id + 10, static_cast<float>(id));
    }
    const ptx::Model model = read(writer);
    ASSERT_EQ(top(model).children.size(), 3u);
    const std::vector<ptx::Occurrence>& chosen = model.products[top(model).children[0].product].children;
    ASSERT_EQ(chosen.size(), 1u);
    EXPECT_EQ(legOf(model, chosen[0].product), 11);
    EXPECT_THAT(model.products[top(model).children[1].product].children, IsEmpty());
    EXPECT_EQ(legOf(model, top(model).children[2].product), 11);
}

TEST_F(JtStructure, ASwitchOfSomethingThatIsNotThereShowsNothing)
{
    FileWriter writer = assembly({2, 4});
    writer.choice(2, {10}, 1);
    writer.part(4, {5, 6});
    writer.choice(5, {11}, 2000000000);
    writer.triangle(6, 3);
    writer.part(10, {11});
    writer.triangle(11, 5);
    const ptx::Model model = read(writer);
    EXPECT_THAT(model.products[top(model).children.at(0).product].children, IsEmpty());
    EXPECT_EQ(legOf(model, top(model).children.at(1).product), 3);
}

namespace
{

/// A part with three levels of detail of the sizes 10, 20 and 30.
FileWriter threeLevels(bool isFinestBroken, bool areAllBroken = false)
{
    FileWriter writer = assembly({2});
    writer.part(2, {3});
    writer.levels(3, {10, 20, 30});
    for (const Id id : {10, 20, 30}) {
        writer.group(id, {id + 1});
        if (areAllBroken || (id == 10 && isFinestBroken))
            writer.brokenTriangle(id + 1);
        else
            writer.triangle(id + 1, static_cast<float>(id));
    }
    return writer;
}

float legWith(ReadRun& run, const FileWriter& writer, const std::vector<std::string>& assignments = {})
{
    const ptx::Model model = run.read(writer, assignments);
    return legOf(model, top(model).children.at(0).product);
}

} // namespace

TEST_F(JtStructure, TheFinestLevelIsTakenOrTheOneThatIsAskedForOrElseTheCoarsest)
{
    EXPECT_EQ(legWith(*this, threeLevels(false)), 10);
    EXPECT_EQ(legWith(*this, threeLevels(false), {"mesh.level=1"}), 20);
    EXPECT_EQ(legWith(*this, threeLevels(false), {"mesh.level=2"}), 30);
    EXPECT_EQ(legWith(*this, threeLevels(false), {"mesh.level=9"}), 30);
    EXPECT_FALSE(hasWarnings());
}

TEST_F(JtStructure, ALevelThatCannotBeReadIsStoodInForWithAWarning)
{
    EXPECT_EQ(legWith(*this, threeLevels(true)), 20);
    EXPECT_THAT(log(), HasSubstr("Warning: level of detail 0 cannot be read; level 1 stands in for it"));
}

TEST_F(JtStructure, APartNoneOfWhoseLevelsCanBeReadIsToldAndBearsTheTag)
{
    FileWriter writer = assembly({2, 50});
    writer.part(2, {3});
    writer.property(2, "JT_PROP_NAME", "cap.part;1;0:");
    writer.levels(3, {10, 20});
    writer.brokenTriangle(10);
    writer.brokenTriangle(20);
    writer.part(50, {51});
    writer.triangle(51, 8);
    const ptx::Model model = read(writer);
    const ptx::Product& part = model.products[top(model).children.at(0).product];
    EXPECT_EQ(part.body, ptx::NoBody);
    EXPECT_THAT(part.tags, ElementsAre(StartsWith("ptx::missing=shape 10: ")));
    EXPECT_THAT(log(), HasSubstr("Warning: a shape of \"cap\" is left out: shape 10: "));
    EXPECT_EQ(legOf(model, top(model).children.at(1).product), 8);
}

TEST_F(JtStructure, AFileAllOfWhoseMeshesAreBrokenIsDamaged)
{
    const ptx::Outcome<ptx::Model> model = readFile(write(threeLevels(true, true)));
    ASSERT_FALSE(model);
    EXPECT_EQ(model.failure().code, ptx::ExitCode::Damaged);
    EXPECT_EQ(model.failure().message, "no mesh of the JT file can be read; the log tells why");
}

TEST_F(JtStructure, AFileWithoutMeshesHasNothingToImport)
{
    FileWriter writer = assembly({2});
    writer.part(2, {});
    const ptx::Outcome<ptx::Model> model = readFile(write(writer));
    ASSERT_FALSE(model);
    EXPECT_EQ(model.failure().code, ptx::ExitCode::NothingToImport);
}

TEST_F(JtStructure, LevelsOfDetailAboveShapesOfSeveralSegmentsTakeTheFinestSegment)
{
    FileWriter writer = assembly({2});
    writer.part(2, {3});
    writer.late(3, "JT_LLPROP_SHAPEIMPL", 5000, 7); // no such segment
    writer.triangle(3, 6);
    const ptx::Model model = read(writer);
    EXPECT_EQ(legOf(model, top(model).children.at(0).product), 6);
}

TEST_F(JtStructure, AShapeWhoseSegmentIsMissingIsToldAndTheOthersStay)
{
    FileWriter writer = assembly({2});
    writer.part(2, {3, 4});
    writer.shape(3);
    writer.late(3, "JT_LLPROP_SHAPEIMPL", 5000, 7);
    writer.triangle(4, 9);
    writer.late(2, "JT_LLPROP_METADATA", 5001, 4);
    const ptx::Model model = read(writer);
    const std::size_t part = top(model).children.at(0).product;
    EXPECT_EQ(legOf(model, part), 9);
    EXPECT_THAT(
        model.products[part].tags,
        ElementsAre("ptx::missing=shape 3: a shape has no mesh in the file (at 0)\n" + folder().file("input.jt")));
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
    const ptx::Model model = read(writer);
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
    const ptx::Model model = read(writer);
    EXPECT_THAT(model.tags, Contains("ptx::unit=INCHES"));
    const ptx::Occurrence& occurrence = top(model).children.at(0);
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
    const ptx::Model model = read(writer, {"mesh.unit=1000"});
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
    const ptx::Model model = read(writer);
    EXPECT_EQ(top(model).name, "top");
    EXPECT_EQ(top(model).children.at(0).name, "bolt M6");
    EXPECT_EQ(model.products[top(model).children[0].product].name, "bolt M6");
    const ptx::Product& frame = model.products[top(model).children.at(1).product];
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
    const ptx::Model model = read(writer);
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
            const ptx::Outcome<ptx::jt::JtFile> file = ptx::jt::openJtFile("a.jt", writer.file());
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
    const ptx::Model model = read(writer);
    ASSERT_EQ(top(model).children.size(), 1u);
    EXPECT_EQ(legOf(model, top(model).children[0].product), 2);
}

TEST_F(JtStructure, InstancesInACircleAreLeftOut)
{
    FileWriter writer = assembly({2, 4});
    writer.instance(2, 3);
    writer.instance(3, 2);
    writer.part(4, {5});
    writer.triangle(5, 2);
    const ptx::Model model = read(writer);
    EXPECT_EQ(top(model).children.size(), 1u);
    EXPECT_THAT(log(), HasSubstr("Warning: instances lead to each other without end; they are left out"));
}

TEST_F(JtStructure, InstancesMayLeadToEachOther256Deep)
{
    for (const int depth : {255, 256}) {
        FileWriter writer = assembly({2, 1000});
        for (Id id = 2; id < 2 + depth; ++id)
            writer.instance(id, id + 1);
        writer.part(2 + depth, {1001});
        writer.part(1000, {1001});
        writer.triangle(1001, 2);
        ReadRun run;
        const ptx::Model model = run.read(writer);
        EXPECT_EQ(top(model).children.size(), depth == 255 ? 2u : 1u);
        EXPECT_EQ(run.hasWarnings(), depth == 256);
    }
}

namespace
{

ptx::Failure sceneFailure(const ptx::Model& model, double mostNodes)
{
    const ptx::Outcome<ptx::Scene> scene = ptx::buildScene(model, "/model.jt", mostNodes);
    EXPECT_FALSE(scene);
    return scene ? ptx::Failure() : scene.failure();
}

} // namespace

TEST_F(JtStructure, AnAssemblyInACircleIsRefusedByTheScene)
{
    FileWriter writer = assembly({2, 4});
    writer.metadata(2, {3});
    writer.instance(3, 1);
    writer.part(4, {5});
    writer.triangle(5, 2);
    EXPECT_EQ(sceneFailure(read(writer), 1000).message, "an assembly of the file contains itself");
}

TEST_F(JtStructure, AssembliesThatMultiplyAreHeldOnceAndEndAtTheLimitOfNodes)
{
    constexpr Id Depth = 50;
    FileWriter writer = assembly({2});
    for (Id id = 2; id < Depth; ++id)
        writer.metadata(id, {id + 1, id + 1});
    writer.part(Depth, {Depth + 1});
    writer.triangle(Depth + 1, 2);
    const ptx::Model model = read(writer, {"limit.nodes=1000"});
    EXPECT_EQ(model.products.size(), static_cast<std::size_t>(Depth));
    const ptx::Failure failure = sceneFailure(model, 1000);
    EXPECT_EQ(failure.code, ptx::ExitCode::MemoryLimit);
    EXPECT_THAT(failure.message, HasSubstr("limit.nodes"));
}

// Each instance of another colour makes a product of its own, whose children count anew.
TEST_F(JtStructure, ProductsThatColoursMultiplyEndAtTheLimitOfNodes)
{
    constexpr Id Count = 300;
    Ids instances;
    for (Id i = 0; i < Count; ++i)
        instances.push_back(1000 + i);
    FileWriter writer = assembly(instances);
    for (Id i = 0; i < Count; ++i) {
        writer.instance(1000 + i, 2, {{2000 + i}});
        writer.material(2000 + i, {static_cast<float>(i) / Count, 0.5f, 0.5f, 1});
    }
    writer.metadata(2, Ids(Count, 3));
    writer.part(3, {4});
    writer.triangle(4, 2);
    const ptx::Model model = read(writer, {"limit.nodes=1000"});
    std::size_t occurrences = 0;
    for (const ptx::Product& product : model.products)
        occurrences += product.children.size();
    EXPECT_LE(occurrences, 1002u);
    EXPECT_EQ(sceneFailure(model, 1000).code, ptx::ExitCode::MemoryLimit);
}

TEST_F(JtStructure, GroupsOfShapesThatMultiplyAreCutOff)
{
    FileWriter writer = assembly({2});
    writer.part(2, {3});
    for (Id id = 3; id < 60; ++id)
        writer.group(id, {id + 1, id + 1});
    writer.triangle(60, 2);
    const ptx::Model model = read(writer);
    const std::vector<std::string>& tags = model.products[top(model).children.at(0).product].tags;
    EXPECT_THAT(tags, ElementsAre(StartsWith("ptx::missing=the groups of its shapes multiply without end")));
}

TEST_F(JtStructure, GroupsOfShapesInACircleAreCutOff)
{
    FileWriter writer = assembly({2});
    writer.part(2, {3, 5});
    writer.group(3, {4});
    writer.group(4, {3});
    writer.triangle(5, 3);
    const ptx::Model model = read(writer);
    const ptx::Product& part = model.products[top(model).children.at(0).product];
    EXPECT_THAT(part.tags, ElementsAre(StartsWith("ptx::missing=the groups of its shapes multiply without end")));
}
