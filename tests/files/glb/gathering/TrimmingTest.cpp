#include "files/glb/gathering/Trimming.h"

#include "files/glb/gathering/NodeForest.h"
#include "tests/files/glb/gathering/GatheredFile.h"

#include <gtest/gtest.h>

namespace
{

using files::glb::gathering::NodeForest;
using files::glb::gathering::Trimming;
using gathered::Json;
using gathered::PackedFile;

class TrimmingTest : public testing::Test
{
protected:
    void finish() { trimming.finish({0, 1, 3, 2}); }

    PackedFile file = gathered::emptyFile();
    Trimming trimming = Trimming((prepare(), file));

private:
    void prepare()
    {
        file.nodes = Json::parse(R"([
            {"name": "root", "children": [1, 2]},
            {"name": "branch", "children": [3]},
            {"name": "other", "mesh": 1},
            {"name": "leaf", "mesh": 0, "extras": {"product": 3}}])");
        for (const char* name : {"a", "b"})
            gathered::addMesh(file, name, {});
    }
};

TEST_F(TrimmingTest, NodesWithNothingLeftGoWithTheirMeshes)
{
    EXPECT_EQ(trimming.takeMesh(3, false), Json::parse(R"({"name": "leaf", "product": 3})"));
    finish();
    EXPECT_EQ(file.nodes, Json::parse(R"([{"name": "root", "children": [1]}, {"name": "other", "mesh": 0}])"));
    ASSERT_EQ(file.meshes.size(), 1u);
    EXPECT_EQ(file.meshes[0]["name"], "b");
}

TEST_F(TrimmingTest, NodesAboveWithExtrasStay)
{
    file.nodes[1]["extras"]["step"] = "x";
    trimming.takeMesh(3, false);
    finish();
    EXPECT_EQ(file.nodes.size(), 3u);
    EXPECT_FALSE(file.nodes[1].contains("children"));
}

TEST_F(TrimmingTest, NodesThatWereEmptyBeforeStay)
{
    file.nodes[2].erase("mesh");
    trimming.takeMesh(3, false);
    finish();
    EXPECT_EQ(file.nodes, Json::parse(R"([{"name": "root", "children": [1]}, {"name": "other"}])"));
}

TEST_F(TrimmingTest, KeptNodesKeepTheirExtras)
{
    EXPECT_EQ(trimming.takeMesh(3, true), Json::parse(R"({"name": "leaf"})"));
    finish();
    EXPECT_EQ(file.nodes.size(), 4u);
    EXPECT_EQ(file.nodes[3]["extras"]["product"], 3);
}

TEST_F(TrimmingTest, NodesWithChildrenOrExtensionsKeepTheirExtras)
{
    file.nodes[3]["extensions"]["X"] = 1;
    EXPECT_EQ(trimming.takeMesh(3, false), Json::parse(R"({"name": "leaf"})"));
    finish();
    EXPECT_EQ(file.nodes.size(), 4u);
}

TEST_F(TrimmingTest, NewNodesHangWhereTheyAreToldAndNumbersFollow)
{
    trimming.takeMesh(3, false);
    trimming.add(0, {{"name", "new"}, {"mesh", 1}});
    trimming.add(NodeForest::none, {{"name", "top"}});
    finish();
    EXPECT_EQ(file.nodes[0]["children"], Json::parse("[1, 2]"));
    EXPECT_EQ(file.nodes[2]["name"], "new");
    EXPECT_EQ(file.scene["nodes"], Json::parse("[0, 3]"));
    EXPECT_EQ(file.nodes[3]["name"], "top");
}

} // namespace
