#include "importer/inventory/PartMeasures.h"

#include "tests/importer/inventory/InventoryScene.h"

namespace
{

using namespace importer::inventory;
using PartMeasuresTest = InventoryTest;

TEST_F(PartMeasuresTest, ABoxIsClosedThoughItsFacesShareNoCorners)
{
    const osg::Mesh mesh = box({2, 3, 4}, {1000, -500, 7});
    const MeshMeasures measures = measure({{&mesh, {}}});
    EXPECT_DOUBLE_EQ(measures.area, 52);
    ASSERT_TRUE(measures.volume);
    EXPECT_DOUBLE_EQ(*measures.volume, 24);
}

TEST_F(PartMeasuresTest, TheMatrixCounts)
{
    const osg::Mesh mesh = box({2, 3, 4});
    const MeshMeasures measures = measure({{&mesh, {{2, 0, 0, 0, 0, -1, 0, 0, 0, 0, 1, 0, 5, 6, 7, 1}}}});
    EXPECT_DOUBLE_EQ(measures.area, 2 * (4 * 3 + 4 * 4 + 3 * 4));
    EXPECT_DOUBLE_EQ(measures.volume.value_or(0), 48);
}

TEST_F(PartMeasuresTest, ABoxWithoutAFaceHasAnAreaOnly)
{
    osg::Mesh mesh = box({2, 3, 4});
    std::vector<std::uint32_t> triangles(mesh.triangles.begin(), mesh.triangles.end() - 3);
    mesh.triangles = std::move(triangles);
    const MeshMeasures measures = measure({{&mesh, {}}});
    EXPECT_DOUBLE_EQ(measures.area, 52 - 6);
    EXPECT_FALSE(measures.volume);
}

TEST_F(PartMeasuresTest, MeshesThatCloseEachOtherAreOnePart)
{
    const osg::Mesh whole = box({2, 3, 4});
    osg::Mesh first = whole;
    osg::Mesh second = whole;
    first.triangles = std::vector<std::uint32_t>(whole.triangles.begin(), whole.triangles.begin() + 6);
    second.triangles = std::vector<std::uint32_t>(whole.triangles.begin() + 6, whole.triangles.end());
    EXPECT_FALSE(measure({{&first, {}}}).volume);
    EXPECT_DOUBLE_EQ(measure({{&first, {}}, {&second, {}}}).volume.value_or(0), 24);
}

TEST_F(PartMeasuresTest, NothingHasNoVolume)
{
    EXPECT_EQ(measure({}).area, 0);
    EXPECT_FALSE(measure({}).volume);
}

} // namespace
