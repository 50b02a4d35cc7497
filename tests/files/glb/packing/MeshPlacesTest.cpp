#include "files/glb/packing/MeshPlaces.h"

#include <gtest/gtest.h>

namespace
{

using files::glb::packing::Box;
using files::glb::packing::Json;
using files::glb::packing::MeshPlaces;
using files::glb::packing::PackedFile;

MeshPlaces placesOfMeshes(const Json& nodes, const std::vector<Box>& boxes)
{
    PackedFile file;
    file.nodes = nodes;
    return files::glb::packing::placesOfMeshes(file, boxes);
}

const std::vector<Box> boxes = {{{0, 0, 0}, {2, 3, 4}}, {{0, 0, 0}, {1, 1, 1}}};

TEST(MeshPlaces, ScalesOfNodesOnTopOfEachOtherMultiply)
{
    const Json nodes = Json::parse(R"([{"scale": [2, 2, 2], "children": [1]}, {"scale": [5, 3, 1], "mesh": 0}])");
    const MeshPlaces places = placesOfMeshes(nodes, boxes);
    EXPECT_DOUBLE_EQ(places.scales[0], 10);
    EXPECT_DOUBLE_EQ(places.extent, 20);
}

TEST(MeshPlaces, LargestOfSeveralUsesCounts)
{
    const Json nodes =
        Json::parse(R"([{"mesh": 1, "scale": [3, 3, 3]}, {"mesh": 1, "scale": [7, 7, 7]}, {"mesh": 1}])");
    EXPECT_DOUBLE_EQ(placesOfMeshes(nodes, boxes).scales[1], 7);
}

TEST(MeshPlaces, TurnsAndMatricesKeepLengths)
{
    const Json turned = Json::parse(R"([{"mesh": 0, "rotation": [0, 0, 0.6, 0.8], "translation": [100, 0, 0]}])");
    EXPECT_NEAR(placesOfMeshes(turned, boxes).scales[0], 1, 1e-12);
    const Json matrix = Json::parse(R"([{"mesh": 0, "matrix": [0, 0, -1, 0, 0, 1, 0, 0, 1, 0, 0, 0, 50, 0, 0, 1]}])");
    EXPECT_DOUBLE_EQ(placesOfMeshes(matrix, boxes).scales[0], 1);
    EXPECT_DOUBLE_EQ(placesOfMeshes(matrix, boxes).extent, 4);
}

TEST(MeshPlaces, ExtentHoldsWhatStandsApart)
{
    const Json nodes = Json::parse(R"([{"mesh": 1}, {"mesh": 1, "translation": [0, 0, -40]}])");
    EXPECT_DOUBLE_EQ(placesOfMeshes(nodes, boxes).extent, 41);
}

TEST(MeshPlaces, WhatIsShrunkCountsAsItIsShown)
{
    const Json nodes =
        Json::parse(R"([{"mesh": 0, "scale": [1e-6, 1e-6, 1e-6], "extras": {"shown": {"scale": [2, 2, 2]}}}])");
    EXPECT_DOUBLE_EQ(placesOfMeshes(nodes, boxes).scales[0], 2);
}

TEST(MeshPlaces, LevelsOfANodeStandWhereItStands)
{
    const Json nodes = Json::parse(R"([
        {"scale": [3, 3, 3], "translation": [50, 0, 0], "children": [1]},
        {"mesh": 0, "scale": [2, 2, 2], "extensions": {"MSFT_lod": {"ids": [2]}}}, {"mesh": 1, "scale": [2, 2, 2]}])");
    EXPECT_EQ(files::glb::packing::levelsOf(nodes[1]), std::vector<std::size_t>{2});
    EXPECT_TRUE(files::glb::packing::levelsOf(nodes[0]).empty());
    const MeshPlaces places = placesOfMeshes(nodes, boxes);
    EXPECT_DOUBLE_EQ(places.scales[1], 6);
    EXPECT_DOUBLE_EQ(places.extent, 24); // and not from 0 to 62
}

TEST(MeshPlaces, BoxesAreThoseOfAllPrimitives)
{
    files::glb::packing::PackedFile file;
    file.meshes = Json::parse(R"([{"primitives": [{"attributes": {"POSITION": 0}}, {"attributes": {"POSITION": 1}}]},
                                  {"primitives": [{"attributes": {"POSITION": 1}}]}])");
    file.accessors = Json::parse(R"([{"min": [0, 1, 2], "max": [3, 4, 5]}, {"min": [-1, 2, 3], "max": [1, 9, 4]}])");
    const std::vector<Box> all = boxesOf(file);
    ASSERT_EQ(all.size(), 2u);
    EXPECT_EQ(all[0].least, (files::glb::packing::Vector{-1, 1, 2}));
    EXPECT_EQ(all[0].most, (files::glb::packing::Vector{3, 9, 5}));
    EXPECT_EQ(all[1].longestSide(), 7);
}

TEST(MeshPlaces, MeshesThatNothingDrawsHaveScaleOne)
{
    EXPECT_EQ(placesOfMeshes(Json::array(), boxes).scales, (std::vector<double>{1, 1}));
    EXPECT_EQ(placesOfMeshes(Json::array(), boxes).extent, 0);
}

} // namespace
