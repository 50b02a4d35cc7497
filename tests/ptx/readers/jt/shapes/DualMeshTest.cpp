#include "ptx/readers/jt/shapes/DualMesh.h"

#include <gtest/gtest.h>

using namespace ptx::jt::codec;
using namespace ptx::jt::shapes;

namespace
{

/// A block of eight points and twelve triangles on six surfaces.
Topology block()
{
    Topology topology;
    topology.degrees[0] = {5, 6, 4, 5, 4, 5, 3};
    topology.degrees[1] = {4};
    topology.valences = Values(12, 3);
    topology.groups = {0, 4, 1, 1, 4, 3, 5, 3, 2, 5, 2, 0};
    topology.flags = Values(12, 0);
    topology.masks[1] = {7};
    topology.masks[2] = {7, 13, 7};
    topology.masks[3] = {22, 26, 21};
    topology.masks[4] = {21};
    return topology;
}

std::vector<std::array<std::uint32_t, 3>> positionsOf(const Connectivity& mesh)
{
    std::vector<std::array<std::uint32_t, 3>> result;
    for (const Triangle& triangle : mesh.triangles)
        result.push_back({triangle.corners[0].position, triangle.corners[1].position, triangle.corners[2].position});
    return result;
}

std::array<std::uint32_t, 3> recordsOf(const Triangle& triangle)
{
    return {triangle.corners[0].record, triangle.corners[1].record, triangle.corners[2].record};
}

} // namespace

TEST(JtDualMesh, BlockHasItsTrianglesAndRecords)
{
    using Row = std::array<std::uint32_t, 3>;
    const Connectivity mesh = rebuild(block());
    ASSERT_EQ(mesh.error, nullptr);
    EXPECT_EQ(mesh.positions, 8u);
    EXPECT_EQ(positionsOf(mesh), (std::vector<Row>{{0, 1, 2},
                                                   {0, 2, 3},
                                                   {0, 3, 4},
                                                   {0, 4, 1},
                                                   {3, 2, 5},
                                                   {3, 5, 4},
                                                   {5, 2, 6},
                                                   {5, 6, 4},
                                                   {4, 6, 1},
                                                   {6, 2, 7},
                                                   {6, 7, 1},
                                                   {7, 2, 1}}));
    EXPECT_EQ(recordsOf(mesh.triangles[0]), (Row{0, 5, 6}));
    EXPECT_EQ(recordsOf(mesh.triangles[5]), (Row{10, 17, 12}));
    EXPECT_EQ(recordsOf(mesh.triangles[11]), (Row{22, 6, 5}));
    EXPECT_EQ(mesh.triangles[6].group, 5);
}

TEST(JtDualMesh, CoverPolygonsAreLeftOut)
{
    Topology open = block();
    open.flags[1] = 1;
    EXPECT_EQ(rebuild(open).triangles.size(), 11u);
}

TEST(JtDualMesh, ArraysThatContradictEachOtherGiveNoTriangles)
{
    Topology left = block();
    left.degrees[6] = {5};
    EXPECT_STREQ(rebuild(left).error, "arrays of the mesh are left over");
    Topology few = block();
    few.valences.pop_back();
    EXPECT_STREQ(rebuild(few).error, "the mesh ends before its rings are full");
    Topology split = block();
    split.degrees[1] = {0};
    EXPECT_STREQ(rebuild(split).error, "the mesh names more splits than it has");
    EXPECT_TRUE(rebuild(split).triangles.empty());
}
