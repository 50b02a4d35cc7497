#include "files/glb/gathering/NodeForest.h"

#include <gtest/gtest.h>

namespace
{

using files::glb::gathering::Json;
using files::glb::gathering::NodeForest;
using Numbers = std::vector<std::size_t>;

const Json scene = Json::parse(R"({"nodes": [2, 0]})");
const Json nodes = Json::parse(R"([
    {"name": "right", "children": [4, 1]},
    {"name": "leaf", "translation": [0, 0, 5], "children": [5]},
    {"name": "left", "scale": [2, 2, 2], "children": [3]},
    {"extras": {"variants": {"day": true}}},
    {"extensions": {"KHR_node_visibility": {"visible": false}}},
    {"name": "deep", "translation": [1, 0, 0], "children": [6]},
    {"extras": {"annotations": true}},
    {"name": "apart"}])");

TEST(NodeForest, OrderGoesDownBeforeItGoesOnAndLeavesOutWhatIsNotInTheScene)
{
    const NodeForest forest(scene, nodes);
    EXPECT_EQ(forest.order(), (Numbers{2, 3, 0, 4, 1, 5, 6}));
    EXPECT_EQ(forest.rank(0), 2u);
    EXPECT_EQ(forest.parent(5), 1u);
    EXPECT_EQ(forest.parent(2), NodeForest::none);
}

TEST(NodeForest, SwitchedNodesAndAnnotationsAreHeadsOfRegions)
{
    const NodeForest forest(scene, nodes);
    for (const std::size_t head : {3u, 4u, 6u})
        EXPECT_EQ(forest.region(head), head);
    for (const std::size_t other : {0u, 1u, 2u, 5u})
        EXPECT_EQ(forest.region(other), NodeForest::none);
    const Json below = Json::parse(R"([{"children": [1], "extras": {"variants": {}}}, {"name": "x"}])");
    EXPECT_EQ(NodeForest(Json::parse(R"({"nodes": [0]})"), below).region(1), 0u);
}

TEST(NodeForest, CommonAncestorsAreTheLowestOnes)
{
    const NodeForest forest(scene, nodes);
    EXPECT_EQ(forest.commonAncestor(4, 5), 0u);
    EXPECT_EQ(forest.commonAncestor(5, 4), 0u);
    EXPECT_EQ(forest.commonAncestor(6, 1), 1u);
    EXPECT_EQ(forest.commonAncestor(1, 1), 1u);
    EXPECT_EQ(forest.commonAncestor(3, 4), NodeForest::none);
    EXPECT_EQ(forest.commonAncestor(NodeForest::none, 4), NodeForest::none);
}

TEST(NodeForest, PlacesLeadIntoTheSpaceOfTheNodeAbove)
{
    const NodeForest forest(scene, nodes);
    EXPECT_EQ(forest.place(5, 0)[3], (files::glb::packing::Vector{1, 0, 5}));
    EXPECT_EQ(forest.place(5, 1)[3], (files::glb::packing::Vector{1, 0, 0}));
    EXPECT_EQ(forest.place(3, NodeForest::none)[0], (files::glb::packing::Vector{2, 0, 0}));
    EXPECT_EQ(forest.place(5, 5), files::glb::packing::identityAffine);
}

TEST(NodeForest, PathsHaveTheNamesBetween)
{
    const NodeForest forest(scene, nodes);
    EXPECT_EQ(forest.path(5, NodeForest::none), (std::vector<std::string>{"right", "leaf"}));
    EXPECT_EQ(forest.path(5, 0), (std::vector<std::string>{"leaf"}));
    EXPECT_TRUE(forest.path(5, 1).empty());
    EXPECT_TRUE(forest.path(5, 5).empty());
}

TEST(NodeForest, SiblingsOfOneNameMakePathsAmbiguous)
{
    const Json twins = Json::parse(R"([
        {"name": "top", "children": [1, 2, 3]}, {"name": "twin", "children": [4]}, {"name": "other", "children": [5]},
        {"name": "twin"}, {"name": "below"}, {"name": "twin"}])");
    const NodeForest forest(Json::parse(R"({"nodes": [0]})"), twins);
    for (const std::size_t node : {1u, 3u, 4u})
        EXPECT_TRUE(forest.isAmbiguous(node, 0)) << node;
    for (const std::size_t node : {0u, 2u, 5u})
        EXPECT_FALSE(forest.isAmbiguous(node, 0)) << node;
    EXPECT_FALSE(forest.isAmbiguous(4, 1));
}

} // namespace
