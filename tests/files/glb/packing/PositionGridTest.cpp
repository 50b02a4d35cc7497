#include "files/glb/packing/PositionGrid.h"

#include <gtest/gtest.h>

#include <cmath>

namespace
{

using files::glb::packing::Box;
using files::glb::packing::gridFor;
using files::glb::packing::GridOf;
using files::glb::packing::largestMerged;
using files::glb::packing::PositionGrid;

TEST(PositionGrid, StepLetsNoVertexMoveFurtherThanTheError)
{
    const PositionGrid grid = gridFor({{-10, 0, 0}, {20, 5, 5}}, 0.05);
    EXPECT_DOUBLE_EQ(grid.step, 0.057);
    EXPECT_LE(grid.error(), 0.05);
    EXPECT_GT(grid.error(), 0.049);
}

TEST(PositionGrid, LargeMeshesMayErrByAShareOfTheirLongestSide)
{
    const PositionGrid grid = gridFor({{0, 0, 0}, {16384, 3, 3}}, 0.05);
    EXPECT_LE(grid.error(), 1);
    EXPECT_GT(grid.error(), 0.9);
}

TEST(PositionGrid, OriginIsThatOfTheMeshWhereItsNumbersFit)
{
    const PositionGrid grid = gridFor({{-100, -100, -100}, {100, 100, 100}}, 0.05);
    EXPECT_TRUE(grid.isSigned);
    EXPECT_EQ(grid.origin, (std::array<std::int64_t, 3>{0, 0, 0}));
}

TEST(PositionGrid, MeshesFarAwayHaveAnOriginOfTheirOwn)
{
    const PositionGrid grid = gridFor({{9000, -50, 0}, {9100, 50, 10}}, 0.05);
    EXPECT_FALSE(grid.isSigned);
    EXPECT_EQ(grid.origin[0], static_cast<std::int64_t>(std::floor(9000 / 0.057)));
    EXPECT_EQ(grid.origin[1], static_cast<std::int64_t>(std::floor(-50 / 0.057)));
}

TEST(PositionGrid, MeshesWithoutSizeHaveNoGridWithoutAnError)
{
    EXPECT_FALSE(gridFor({{1, 2, 3}, {1, 2, 3}}, 0).isOn());
    EXPECT_TRUE(gridFor({{1, 2, 3}, {1, 2, 3}}, 0.05).isOn());
}

TEST(PositionGrid, MergedMeshesAreAsFineAsTheirPartsWouldBe)
{
    const double error = 0.05;
    const Box box = {{-100, 0, 0}, {largestMerged(error) - 100, 10, 10}};
    EXPECT_GT(gridFor(box, error).error(), error);
    const PositionGrid grid = gridFor(box, error, GridOf::Merged);
    EXPECT_LE(grid.error(), error);
    const double diagonal = largestMerged(error) * std::sqrt(3.0);
    EXPECT_LE(gridFor({{0, 0, 0}, {diagonal, 1, 1}}, error, GridOf::Merged).error(), error);
    EXPECT_LT(diagonal / grid.step, 65535);
}

TEST(PositionGrid, NumbersLeadBackIntoTheMesh)
{
    const PositionGrid grid = gridFor({{9000, -50, 0}, {9100, 50, 10}}, 0.05);
    const files::glb::packing::Affine place = grid.toMesh();
    EXPECT_NEAR(place[3][0], 9000, 0.06);
    EXPECT_NEAR(place[3][1], -50, 0.06);
    EXPECT_DOUBLE_EQ(place[0][0], static_cast<float>(grid.step));
    EXPECT_EQ(place[0][1], 0);
}

} // namespace
