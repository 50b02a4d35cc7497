#include "tests/ptx/readers/jt/ProductTreeRun.h"

#include <gmock/gmock.h>

using namespace jttest;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

namespace
{

class JtStructureLimits : public JtStructure
{
};

} // namespace

TEST_F(JtStructureLimits, InstancesInACircleAreLeftOut)
{
    FileWriter writer = assembly({2, 4});
    writer.instance(2, 3);
    writer.instance(3, 2);
    writer.part(4, {5});
    writer.triangle(5, 2);
    const ptx::model::Model model = read(writer);
    EXPECT_EQ(top(model).children.size(), 1u);
    EXPECT_THAT(log(), HasSubstr("Warning: instances lead to each other without end; they are left out"));
}

TEST_F(JtStructureLimits, InstancesMayLeadToEachOther256Deep)
{
    for (const int depth : {255, 256}) {
        FileWriter writer = assembly({2, 1000});
        for (Id id = 2; id < 2 + depth; ++id)
            writer.instance(id, id + 1);
        writer.part(2 + depth, {1001});
        writer.part(1000, {1001});
        writer.triangle(1001, 2);
        ReadRun run;
        const ptx::model::Model model = run.read(writer);
        EXPECT_EQ(top(model).children.size(), depth == 255 ? 2u : 1u);
        EXPECT_EQ(run.hasWarnings(), depth == 256);
    }
}

namespace
{

ptx::core::Failure sceneFailure(const ptx::model::Model& model, double mostNodes)
{
    const ptx::core::Outcome<ptx::scene::Scene> scene = ptx::scene::buildScene(model, "/model.jt", mostNodes);
    EXPECT_FALSE(scene);
    return scene ? ptx::core::Failure() : scene.failure();
}

} // namespace

TEST_F(JtStructureLimits, AnAssemblyInACircleIsRefusedByTheScene)
{
    FileWriter writer = assembly({2, 4});
    writer.metadata(2, {3});
    writer.instance(3, 1);
    writer.part(4, {5});
    writer.triangle(5, 2);
    EXPECT_EQ(sceneFailure(read(writer), 1000).message, "an assembly of the file contains itself");
}

TEST_F(JtStructureLimits, AssembliesThatMultiplyAreHeldOnceAndEndAtTheLimitOfNodes)
{
    constexpr Id Depth = 50;
    FileWriter writer = assembly({2});
    for (Id id = 2; id < Depth; ++id)
        writer.metadata(id, {id + 1, id + 1});
    writer.part(Depth, {Depth + 1});
    writer.triangle(Depth + 1, 2);
    const ptx::model::Model model = read(writer, {"limit.nodes=1000"});
    EXPECT_EQ(model.products.size(), static_cast<std::size_t>(Depth));
    const ptx::core::Failure failure = sceneFailure(model, 1000);
    EXPECT_EQ(failure.code, ptx::core::ExitCode::MemoryLimit);
    EXPECT_THAT(failure.message, HasSubstr("limit.nodes"));
}

// Each instance of another colour makes a product of its own, whose children count anew.
TEST_F(JtStructureLimits, ProductsThatColoursMultiplyEndAtTheLimitOfNodes)
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
    const ptx::model::Model model = read(writer, {"limit.nodes=1000"});
    std::size_t occurrences = 0;
    for (const ptx::model::Product& product : model.products)
        occurrences += product.children.size();
    EXPECT_LE(occurrences, 1002u);
    EXPECT_EQ(sceneFailure(model, 1000).code, ptx::core::ExitCode::MemoryLimit);
}

TEST_F(JtStructureLimits, GroupsOfShapesThatMultiplyAreCutOffAndOtherPartsAreNot)
{
    FileWriter writer = assembly({2, 100});
    writer.part(2, {3});
    for (Id id = 3; id < 60; ++id)
        writer.group(id, {id + 1, id + 1});
    writer.triangle(60, 2);
    writer.part(100, {101});
    writer.triangle(101, 3);
    const ptx::model::Model model = read(writer);
    const std::vector<std::string>& tags = model.products[top(model).children.at(0).product].tags;
    EXPECT_THAT(tags, ElementsAre(StartsWith("ptx::missing=the groups of its shapes multiply without end")));
    EXPECT_EQ(legOf(model, top(model).children.at(1).product), 3);
}

TEST_F(JtStructureLimits, GroupsOfShapesInACircleAreCutOff)
{
    FileWriter writer = assembly({2});
    writer.part(2, {3, 5});
    writer.group(3, {4});
    writer.group(4, {3});
    writer.triangle(5, 3);
    const ptx::model::Model model = read(writer);
    const ptx::model::Product& part = model.products[top(model).children.at(0).product];
    EXPECT_THAT(part.tags, ElementsAre(StartsWith("ptx::missing=the groups of its shapes multiply without end")));
}
