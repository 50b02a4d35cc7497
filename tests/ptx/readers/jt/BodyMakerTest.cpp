#include "tests/ptx/readers/jt/ProductTreeRun.h"

#include <gmock/gmock.h>

using namespace jttest;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

namespace
{

class JtLevels : public JtStructure
{
};

} // namespace

TEST_F(JtLevels, OfASwitchTheSelectedChildIsTaken)
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
    const ptx::model::Model model = read(writer);
    ASSERT_EQ(top(model).children.size(), 3u);
    const std::vector<ptx::model::Occurrence>& chosen = model.products[top(model).children[0].product].children;
    ASSERT_EQ(chosen.size(), 1u);
    EXPECT_EQ(legOf(model, chosen[0].product), 11);
    EXPECT_THAT(model.products[top(model).children[1].product].children, IsEmpty());
    EXPECT_EQ(legOf(model, top(model).children[2].product), 11);
}

TEST_F(JtLevels, ASwitchOfSomethingThatIsNotThereShowsNothing)
{
    FileWriter writer = assembly({2, 4});
    writer.choice(2, {10}, 1);
    writer.part(4, {5, 6});
    writer.choice(5, {11}, 2000000000);
    writer.triangle(6, 3);
    writer.part(10, {11});
    writer.triangle(11, 5);
    const ptx::model::Model model = read(writer);
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
    const ptx::model::Model model = run.read(writer, assignments);
    return legOf(model, top(model).children.at(0).product);
}

} // namespace

TEST_F(JtLevels, TheFinestLevelIsTakenOrTheOneThatIsAskedForOrElseTheCoarsest)
{
    EXPECT_EQ(legWith(*this, threeLevels(false)), 10);
    EXPECT_EQ(legWith(*this, threeLevels(false), {"mesh.level=1"}), 20);
    EXPECT_EQ(legWith(*this, threeLevels(false), {"mesh.level=2"}), 30);
    EXPECT_EQ(legWith(*this, threeLevels(false), {"mesh.level=9"}), 30);
    EXPECT_FALSE(hasWarnings());
}

TEST_F(JtLevels, ALevelThatCannotBeReadIsStoodInForWithAWarning)
{
    EXPECT_EQ(legWith(*this, threeLevels(true)), 20);
    EXPECT_THAT(log(), HasSubstr("Warning: level of detail 0 cannot be read; level 1 stands in for it"));
}

TEST_F(JtLevels, APartNoneOfWhoseLevelsCanBeReadIsToldAndBearsTheTag)
{
    FileWriter writer = assembly({2, 50});
    writer.part(2, {3});
    writer.property(2, "JT_PROP_NAME", "cap.part;1;0:");
    writer.levels(3, {10, 20});
    writer.brokenTriangle(10);
    writer.brokenTriangle(20);
    writer.part(50, {51});
    writer.triangle(51, 8);
    const ptx::model::Model model = read(writer);
    const ptx::model::Product& part = model.products[top(model).children.at(0).product];
    EXPECT_EQ(part.body, ptx::model::NoBody);
    EXPECT_THAT(part.tags, ElementsAre(StartsWith("ptx::missing=shape 10: ")));
    EXPECT_THAT(log(), HasSubstr("Warning: a shape of \"cap\" is left out: shape 10: "));
    EXPECT_EQ(legOf(model, top(model).children.at(1).product), 8);
}

TEST_F(JtLevels, AFileAllOfWhoseMeshesAreBrokenIsDamaged)
{
    const ptx::core::Outcome<ptx::model::Model> model = readFile(write(threeLevels(true, true)));
    ASSERT_FALSE(model);
    EXPECT_EQ(model.failure().code, ptx::core::ExitCode::Damaged);
    EXPECT_EQ(model.failure().message, "no mesh of the JT file can be read; the log tells why");
}

TEST_F(JtLevels, AFileWithoutMeshesHasNothingToImport)
{
    FileWriter writer = assembly({2});
    writer.part(2, {});
    const ptx::core::Outcome<ptx::model::Model> model = readFile(write(writer));
    ASSERT_FALSE(model);
    EXPECT_EQ(model.failure().code, ptx::core::ExitCode::NothingToImport);
}

TEST_F(JtLevels, AShapeOfSeveralSegmentsTakesTheFinestThatIsThere)
{
    FileWriter writer = assembly({2});
    writer.part(2, {3});
    writer.late(3, "JT_LLPROP_SHAPEIMPL", 5000, 7); // no such segment
    writer.triangle(3, 6);
    const ptx::model::Model model = read(writer);
    EXPECT_EQ(legOf(model, top(model).children.at(0).product), 6);
}

TEST_F(JtLevels, AShapeWhoseSegmentIsMissingIsToldAndTheOthersStay)
{
    FileWriter writer = assembly({2});
    writer.part(2, {3, 4});
    writer.shape(3);
    writer.late(3, "JT_LLPROP_SHAPEIMPL", 5000, 7);
    writer.triangle(4, 9);
    writer.late(2, "JT_LLPROP_METADATA", 5001, 4);
    const ptx::model::Model model = read(writer);
    const std::size_t part = top(model).children.at(0).product;
    EXPECT_EQ(legOf(model, part), 9);
    EXPECT_THAT(
        model.products[part].tags,
        ElementsAre("ptx::missing=shape 3: a shape has no mesh in the file (at 0)\n" + folder().file("input.jt")));
}
