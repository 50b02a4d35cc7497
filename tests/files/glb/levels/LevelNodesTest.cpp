#include "files/glb/levels/LevelNodes.h"

#include <gtest/gtest.h>

namespace
{

using files::glb::packing::Json;

/// The nodes with levels for mesh 0: the meshes 5 and 6.
Json leveled(const char* nodes)
{
    Json result = Json::parse(nodes);
    files::glb::levels::addLevelNodes(result, {{{5, 6}, {0.5, 0.25, 0}}, {{}, {0}}});
    return result;
}

TEST(LevelNodesTest, ANodeThatOnlyDrawsNamesItsLevelsItself)
{
    EXPECT_EQ(leveled(R"([{"name": "a", "mesh": 0, "translation": [1, 2, 3]}, {"mesh": 1}])"), Json::parse(R"([
        {"name": "a", "mesh": 0, "translation": [1, 2, 3], "extensions": {"MSFT_lod": {"ids": [2, 3]}},
         "extras": {"MSFT_screencoverage": [0.5, 0.25, 0]}},
        {"mesh": 1}, {"mesh": 5, "translation": [1, 2, 3]}, {"mesh": 6, "translation": [1, 2, 3]}])"));
}

TEST(LevelNodesTest, ANodeThatSaysMoreGetsOneBelowThatDraws)
{
    for (const char* more : {R"("camera": 0)", R"("extras": {"product": 3})",
                             R"("extras": {"shown": {"scale": [2, 2, 2]}}, "scale": [2e-6, 2e-6, 2e-6])",
                             R"("extensions": {"KHR_node_visibility": {"visible": false}})"}) {
        const Json before = Json::parse(std::string(R"({"name": "a", "translation": [1, 2, 3], )") + more + "}");
        Json with = before;
        with["mesh"] = 0;
        const Json nodes = leveled(Json::array({with}).dump().c_str());
        Json wanted = before;
        wanted["children"] = {1};
        EXPECT_EQ(nodes, Json::array({wanted,
                                      {{"mesh", 0},
                                       {"extensions", {{"MSFT_lod", {{"ids", {2, 3}}}}}},
                                       {"extras", {{"MSFT_screencoverage", {0.5, 0.25, 0}}}}},
                                      {{"mesh", 5}},
                                      {{"mesh", 6}}}));
    }
    const Json nodes = leveled(R"([{"children": [1], "mesh": 0}, {"mesh": 1}])");
    EXPECT_EQ(nodes[0], Json::parse(R"({"children": [1, 2]})"));
    EXPECT_EQ(nodes[2]["extensions"]["MSFT_lod"]["ids"], Json::parse("[3, 4]"));
}

TEST(LevelNodesTest, LevelsHaveTheInstancesOfTheNode)
{
    const char* const instances = R"({"EXT_mesh_gpu_instancing": {"attributes": {"TRANSLATION": 7}}})";
    Json nodes =
        leveled((std::string(R"([{"mesh": 0, "scale": [2, 2, 2], "extensions": )") + instances + "}]").c_str());
    ASSERT_EQ(nodes.size(), 3u);
    EXPECT_EQ(nodes[2], Json({{"mesh", 6}, {"scale", {2, 2, 2}}, {"extensions", Json::parse(instances)}}));
    EXPECT_EQ(nodes[0]["extensions"].size(), 2u);

    nodes = leveled(
        (std::string(R"([{"mesh": 0, "camera": 1, "scale": [2, 2, 2], "extensions": )") + instances + "}]").c_str());
    EXPECT_EQ(nodes[0], Json::parse(R"({"camera": 1, "scale": [2, 2, 2], "children": [1]})"));
    EXPECT_EQ(nodes[1]["extensions"]["EXT_mesh_gpu_instancing"], Json::parse(instances)["EXT_mesh_gpu_instancing"]);
    EXPECT_EQ(nodes[2], Json({{"mesh", 5}, {"extensions", Json::parse(instances)}}));
}

TEST(LevelNodesTest, EachNodeOfASharedMeshHasLevelsOfItsOwn)
{
    const Json nodes = leveled(R"([{"mesh": 0}, {"mesh": 0, "scale": [3, 3, 3]}])");
    EXPECT_EQ(nodes[0]["extensions"]["MSFT_lod"]["ids"], Json::parse("[2, 3]"));
    EXPECT_EQ(nodes[1]["extensions"]["MSFT_lod"]["ids"], Json::parse("[4, 5]"));
    EXPECT_EQ(nodes[5], Json::parse(R"({"mesh": 6, "scale": [3, 3, 3]})"));
}

} // namespace
