#include "files/glb/gathering/Gathering.h"

#include "files/glb/packing/Affine.h"
#include "files/glb/packing/InstanceArrays.h"
#include "tests/files/glb/gathering/GatheredFile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <ctime>
#include <limits>

namespace
{

using files::glb::GatherOptions;
using files::glb::gathering::gather;
using gathered::Json;
using gathered::PackedFile;

constexpr double anySize = std::numeric_limits<double>::infinity();

class GatheringTest : public testing::Test
{
protected:
    void run(const GatherOptions& options, double largest = anySize) { gather(file, options, largest); }

    const Json* nodeWith(const char* member) const
    {
        for (const Json& node : file.nodes)
            if (node.contains("extras") && node["extras"].contains(member))
                return &node;
        return nullptr;
    }
    /// The names in a table, in its order.
    std::vector<std::string> names(const char* table) const
    {
        std::vector<std::string> result;
        if (const Json* node = nodeWith(table))
            for (const Json& entry : (*node)["extras"][table])
                result.push_back(entry.value("name", std::string("-")));
        return result;
    }
    /// Two bolts below two assemblies, and a plate.
    void makeAssembly(std::size_t boltTriangles = 1)
    {
        gathered::addMesh(file, "bolt", {gathered::triangles(file, 1, boltTriangles)});
        gathered::addMesh(file, "plate", {gathered::triangles(file, 9, 1, 2)});
        file.nodes = Json::parse(R"([
            {"name": "top", "children": [1, 2, 3]},
            {"name": "left", "translation": [-5, 0, 0], "children": [4]},
            {"name": "right", "translation": [5, 0, 0], "children": [5], "extras": {"attributes": {"a": 1}}},
            {"name": "plate", "mesh": 1},
            {"name": "bolt", "mesh": 0, "translation": [0, 1, 0], "extras": {"product": 2, "step": "b1"}},
            {"name": "bolt", "mesh": 0, "translation": [0, 2, 0]}])");
    }

    PackedFile file = gathered::emptyFile();
};

using Names = std::vector<std::string>;

TEST_F(GatheringTest, RepeatedMeshesBecomeInstancesBelowWhatIsAboveAll)
{
    makeAssembly();
    run({true, 0});
    const Json* node = nodeWith("instances");
    ASSERT_TRUE(node);
    EXPECT_EQ((*node)["extras"]["instances"], Json::parse(R"([
        {"name": "bolt", "path": ["left"], "product": 2, "step": "b1"}, {"name": "bolt", "path": ["right"]}])"));
    const std::vector<files::glb::packing::Affine> places = files::glb::packing::instancesOf(file, *node);
    ASSERT_EQ(places.size(), 2u);
    EXPECT_EQ(places[0][3], (files::glb::packing::Vector{-5, 1, 0}));
    EXPECT_EQ(places[1][3], (files::glb::packing::Vector{5, 2, 0}));
    EXPECT_EQ(gathered::draws(file), 2u);
    EXPECT_EQ(file.nodes[0]["children"], Json::parse("[1, 2, 3]"));
    EXPECT_EQ(file.nodes[1]["name"], "right"); // "left" said nothing but its place
    EXPECT_EQ(file.nodes[2]["name"], "plate");
    EXPECT_EQ(file.meshes.size(), 2u);
}

TEST_F(GatheringTest, GroupsTellNodesOfOneNameApart)
{
    makeAssembly();
    file.nodes[1]["name"] = "right";
    run({true, 0});
    const Json& instances = (*nodeWith("instances"))["extras"]["instances"];
    EXPECT_EQ(instances[0]["group"], 0);
    EXPECT_EQ(instances[1]["group"], 1);
    EXPECT_EQ(file.nodes[1]["extras"], Json::parse(R"({"group": 0})"));
    EXPECT_EQ(file.nodes[2]["extras"], Json::parse(R"({"group": 1, "attributes": {"a": 1}})"));
}

TEST_F(GatheringTest, EqualMeshesOfOtherNamesAreInstancesOfOne)
{
    makeAssembly();
    file.meshes.push_back(file.meshes[0]);
    file.meshes[2]["name"] = "screw";
    file.nodes[5]["mesh"] = 2;
    run({true, 0});
    EXPECT_EQ(names("instances"), (Names{"bolt", "bolt"}));
    EXPECT_EQ((*nodeWith("instances"))["extras"]["instances"][1]["mesh"], "screw");
    EXPECT_FALSE((*nodeWith("instances"))["extras"]["instances"][0].contains("mesh"));
}

TEST_F(GatheringTest, PlacesThatNoInstanceCanHaveStayNodes)
{
    makeAssembly();
    file.nodes[1] =
        Json::parse(R"({"name": "left", "matrix": [1,0,0,0, 0.5,1,0,0, 0,0,1,0, 0,0,0,1], "children": [4]})");
    run({true, 0});
    EXPECT_FALSE(nodeWith("instances"));
    EXPECT_EQ(file.nodes.size(), 6u);
}

TEST_F(GatheringTest, WhatIsSwitchedStaysBelowItsSwitch)
{
    makeAssembly();
    file.nodes[1]["extras"]["variants"] = {{"day", true}};
    run({true, 0});
    EXPECT_FALSE(nodeWith("instances"));
    run({true, 100});
    EXPECT_EQ(names("parts"), Names());
}

TEST_F(GatheringTest, SwitchesKeepWhatTheyDrawThemselves)
{
    makeAssembly();
    file.nodes[4]["extras"]["variants"] = {{"day", true}};
    file.nodes[4]["children"] = {6, 7};
    for (const char* name : {"x", "y"})
        file.nodes.push_back({{"name", name}, {"mesh", 0}});
    run({true, 0});
    EXPECT_EQ(names("instances"), (Names{"bolt", "x", "y"}));
    const Json* node = nodeWith("variants");
    ASSERT_TRUE(node);
    EXPECT_EQ(node->value("name", ""), "bolt");
    EXPECT_EQ((*node)["extras"]["product"], 2);
    EXPECT_FALSE(node->contains("mesh"));
    ASSERT_EQ(node->value("children", Json::array()).size(), 1u);
    EXPECT_TRUE(file.nodes[(*node)["children"][0].get<std::size_t>()]["extras"].contains("instances"));
}

TEST_F(GatheringTest, SmallMeshesBecomeOneWithPlacesAndNames)
{
    makeAssembly();
    file.meshes[1]["primitives"][0]["material"] = 1;
    run({false, 10});
    const Json* node = nodeWith("parts");
    ASSERT_TRUE(node);
    EXPECT_EQ((*node)["extras"]["parts"], Json::parse(R"([
        {"name": "bolt", "path": ["left"], "product": 2, "step": "b1"}, {"name": "bolt", "path": ["right"]},
        {"name": "plate"}])"));
    EXPECT_EQ(gathered::draws(file), 1u);
    const Json& primitive = file.meshes[(*node)["mesh"].get<std::size_t>()]["primitives"][0];
    EXPECT_EQ(primitive["extras"]["parts"].size(), 3u);
    const Json& positions = file.accessors[primitive["attributes"]["POSITION"].get<std::size_t>()];
    EXPECT_EQ(positions["min"], Json::parse("[-5, 0, 0]"));
    EXPECT_EQ(positions["max"], Json::parse("[9, 9, 0]"));
    EXPECT_EQ(file.meshes.size(), 1u);
}

TEST_F(GatheringTest, TrianglesAtAllPlacesCount)
{
    makeAssembly(5);
    file.meshes[1]["primitives"][0]["material"] = 1;
    run({false, 10});
    EXPECT_FALSE(nodeWith("parts"));
    run({false, 11});
    EXPECT_EQ(names("parts").size(), 3u);
}

TEST_F(GatheringTest, NothingIsMergedThatSavesNoCall)
{
    makeAssembly();
    file.meshes[1]["primitives"][0] = gathered::triangles(file, 9, 30, 2);
    run({true, 100}); // each is alone in its material
    EXPECT_EQ(names("instances").size(), 2u);
    EXPECT_FALSE(nodeWith("parts"));
}

TEST_F(GatheringTest, PrimitivesOfOneMeshBecomeOne)
{
    makeAssembly();
    for (Json& mesh : file.meshes)
        mesh["primitives"].push_back(gathered::triangles(file, 2, 3, mesh["name"] == "bolt" ? 1 : 2));
    run({true, 100});
    EXPECT_EQ(gathered::draws(file), 2u);
    ASSERT_EQ(names("instances").size(), 2u);
    const Json& bolt = file.meshes[(*nodeWith("instances"))["mesh"].get<std::size_t>()];
    EXPECT_EQ(bolt["name"], "bolt");
    EXPECT_EQ(bolt["primitives"][0]["extras"]["parts"],
              Json::parse(R"([[0, 1, {"material": "white"}], [0, 3, {"material": "red"}]])"));
    EXPECT_EQ(names("parts"), (Names{"plate"}));
}

TEST_F(GatheringTest, InstancesAloneLeavePrimitivesAsTheyAre)
{
    makeAssembly();
    file.meshes[0]["primitives"].push_back(gathered::triangles(file, 2, 3, 1));
    run({true, 0});
    EXPECT_EQ(gathered::draws(file), 3u);
}

TEST_F(GatheringTest, CopiesMayAddATenthWhereInstancesCouldDrawThem)
{
    makeAssembly();
    file.meshes[1]["primitives"][0] = gathered::triangles(file, 9, 8, 1);
    run({true, 100}); // 9 triangles in the file, 1 in the copy
    EXPECT_EQ(names("instances").size(), 2u);
    EXPECT_FALSE(nodeWith("parts"));
    file = gathered::emptyFile();
    makeAssembly();
    file.meshes[1]["primitives"][0] = gathered::triangles(file, 9, 9, 1);
    run({true, 100});
    EXPECT_EQ(names("parts").size(), 3u);
}

TEST_F(GatheringTest, WhatIsSeenThroughStaysAsItIs)
{
    makeAssembly();
    for (Json& mesh : file.meshes)
        mesh["primitives"][0]["material"] = 3;
    const Json before = file.nodes;
    run({true, 100});
    EXPECT_EQ(file.nodes, before);
    for (Json& mesh : file.meshes) {
        mesh["primitives"][0]["material"] = 0;
        mesh["primitives"][0]["extensions"]["KHR_materials_variants"]["mappings"] = {{{"material", 3}}};
    }
    run({true, 100});
    EXPECT_EQ(file.nodes, before);
}

TEST_F(GatheringTest, MergedMeshesAreNoLargerThanAllowed)
{
    gathered::addMesh(file, "a", {gathered::triangles(file, 1)});
    file.nodes = Json::parse(R"([{"children": [1, 2, 3, 4, 5], "scale": [2, 2, 2]}])");
    for (const double x : {0, 1, 20, 21})
        file.nodes.push_back({{"mesh", 0}, {"translation", {x, 0, 0}}});
    gathered::addMesh(file, "large", {gathered::triangles(file, 100), gathered::triangles(file, 90)});
    file.nodes.push_back({{"mesh", 1}, {"name", "large"}});
    run({false, 100}, 4.5);
    std::size_t merged = 0;
    for (const Json& node : file.nodes)
        if (node.contains("extras")) {
            EXPECT_EQ(node["extras"]["parts"].size(), 2u);
            ++merged;
        }
    EXPECT_EQ(merged, 2u);
    EXPECT_EQ(file.nodes[1]["name"], "large");
    EXPECT_EQ(file.meshes[file.nodes[1]["mesh"].get<std::size_t>()]["primitives"].size(), 2u);
}

TEST_F(GatheringTest, RootsWithoutOneAboveGatherInTheScene)
{
    gathered::addMesh(file, "a", {gathered::triangles(file, 1)});
    file.scene["nodes"] = {0, 1};
    file.nodes = Json::parse(R"([{"mesh": 0, "name": "x"}, {"mesh": 0, "name": "y", "translation": [1, 0, 0]}])");
    run({true, 0});
    EXPECT_EQ(file.scene["nodes"], Json::parse("[0]"));
    EXPECT_EQ(names("instances"), (Names{"x", "y"}));
}

TEST_F(GatheringTest, NothingChangesWhenNothingIsAskedFor)
{
    makeAssembly();
    const Json before = file.nodes;
    run({});
    EXPECT_EQ(file.nodes, before);
}

/// Seconds for parts in assemblies of ten, of which every other one has a mesh of its own, and that of all of them.
double secondsFor(std::size_t assemblies)
{
    PackedFile file = gathered::emptyFile();
    for (std::size_t mesh = 0; mesh < assemblies * 5; ++mesh)
        gathered::addMesh(file, "part", {gathered::triangles(file, 1 + float(mesh), 20)});
    file.nodes.push_back({{"children", Json::array()}});
    for (std::size_t i = 0; i < assemblies; ++i) {
        file.nodes[0]["children"].push_back(file.nodes.size());
        const std::size_t assembly = file.nodes.size();
        file.nodes.push_back({{"name", "assembly"}, {"translation", {i, 0, 0}}});
        for (std::size_t part = 0; part < 10; ++part) {
            file.nodes[assembly]["children"].push_back(file.nodes.size());
            file.nodes.push_back({{"name", "part"}, {"mesh", part % 2 == 0 ? i * 5 + part / 2 : part / 2}});
        }
    }
    const std::clock_t start = std::clock();
    gather(file, {true, 10000}, anySize);
    EXPECT_LE(gathered::draws(file), 6u);
    return double(std::clock() - start) / CLOCKS_PER_SEC;
}

/// Three times twice the parts, since the rest of the machine may double the time of a single run by itself; the median
/// of runs in turns, since the least time of a short run is a moment alone that a long one hardly finds.
TEST(GatheringTime, TwiceThePartsTakeTwiceTheTime)
{
    std::vector<double> ratios;
    for (int run = 0; run < 5; ++run) {
        const double once = secondsFor(200);
        ratios.push_back(secondsFor(1600) / once);
    }
    std::sort(ratios.begin(), ratios.end());
    EXPECT_LT(ratios[ratios.size() / 2], 2.3 * 2.3 * 2.3);
}

} // namespace
