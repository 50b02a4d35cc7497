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

TEST(MeshPlaces, MeshesThatNothingDrawsHaveScaleOne)
{
    EXPECT_EQ(placesOfMeshes(Json::array(), boxes).scales, (std::vector<double>{1, 1}));
    EXPECT_EQ(placesOfMeshes(Json::array(), boxes).extent, 0);
}

} // namespace
