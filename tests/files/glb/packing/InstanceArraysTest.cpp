#include "files/glb/packing/InstanceArrays.h"

#include "files/glb/gathering/Instances.h"
#include "tests/files/glb/gathering/GatheredFile.h"

#include <gtest/gtest.h>

namespace
{

using files::glb::gathering::instancesNode;
using files::glb::packing::Affine;
using files::glb::packing::Box;
using files::glb::packing::gridFor;
using files::glb::packing::InstanceArrays;
using files::glb::packing::instancesOf;
using files::glb::packing::Json;
using files::glb::packing::PackedFile;
using files::glb::packing::PackedStreams;
using files::glb::packing::PositionGrid;
using files::glb::packing::Vector;

class InstanceArraysTest : public testing::Test
{
protected:
    InstanceArraysTest()
    {
        file.nodes.push_back(
            instancesNode(file, 0, {{{1, 2, 3}, {0, 0, 1, 0}, {2, 2, 2}}, {{4, 5, 6}, {0, 0, 0, 1}, {1, 1, 1}}}));
    }

    /// The instances of `node` after its arrays were packed for a mesh on `grid`.
    std::vector<Affine> packed(Json& node, const PositionGrid& grid)
    {
        PackedStreams streams;
        InstanceArrays arrays(file, streams);
        arrays.pack(node, grid);
        streams.take(file, false);
        return instancesOf(file, node);
    }

    PackedFile file = gathered::emptyFile();
};

TEST_F(InstanceArraysTest, NodesWithoutInstancesDrawOnceWhereTheyAre)
{
    EXPECT_EQ(instancesOf(file, Json::object()), std::vector<Affine>{files::glb::packing::identityAffine});
    EXPECT_EQ(instancesOf(file, file.nodes[0]).size(), 2u);
    EXPECT_EQ(instancesOf(file, file.nodes[0])[0], (Affine{{{-2, 0, 0}, {0, -2, 0}, {0, 0, 2}, {1, 2, 3}}}));
}

TEST_F(InstanceArraysTest, ArraysStayWhatTheyAreWithoutAGrid)
{
    const std::vector<Affine> before = instancesOf(file, file.nodes[0]);
    EXPECT_EQ(packed(file.nodes[0], {}), before);
}

TEST_F(InstanceArraysTest, GridsAreScaledUpAtEachInstance)
{
    const PositionGrid grid = gridFor({{1000, 0, 0}, {1001, 1, 1}}, 0.001);
    ASSERT_FALSE(grid.isSigned);
    const std::vector<Affine> before = instancesOf(file, file.nodes[0]);
    const std::vector<Affine> after = packed(file.nodes[0], grid);
    for (std::size_t i = 0; i < before.size(); ++i) {
        const Affine expected = files::glb::packing::product(before[i], grid.toMesh());
        for (std::size_t column = 0; column < 4; ++column)
            for (std::size_t row = 0; row < 3; ++row)
                EXPECT_NEAR(after[i][column][row], expected[column][row], 1e-4) << i << column << row;
    }
}

TEST_F(InstanceArraysTest, NodesWithTheSameArraysShareTheNewOnes)
{
    Json other = file.nodes[0];
    PackedStreams streams;
    InstanceArrays arrays(file, streams);
    const PositionGrid grid = gridFor({{0, 0, 0}, {1, 1, 1}}, 0.001);
    arrays.pack(file.nodes[0], grid);
    arrays.pack(other, grid);
    EXPECT_EQ(other, file.nodes[0]);
    streams.take(file, false);
    EXPECT_EQ(file.accessors.size(), 3u);
}

} // namespace
