#include "tests/files/glb/levels/LevelShapes.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace
{

using files::glb::levels::reduced;
using files::glb::levels::sizeOf;
using files::glb::levels::Surface;
using files::glb::levels::Triangles;

TEST(ReductionTest, APlaneKeepsItsBorderAndLittleElse)
{
    const Surface surface = levelshapes::surfaceOf(levelshapes::plane(20, 10));
    const Triangles fewer = reduced(surface, surface.triangles, 0, 1e-4);
    // As many as a polygon of 80 corners has.
    EXPECT_EQ(fewer.size() / 3, 78u);
    EXPECT_EQ(levelshapes::openEdges(surface.positions, fewer),
              levelshapes::openEdges(surface.positions, surface.triangles));
}

TEST(ReductionTest, ClosedSurfacesStayClosed)
{
    for (const osg::Mesh& mesh : {levelshapes::ball(24, 5), levelshapes::drum(48, 6, 5, 8)}) {
        const Surface surface = levelshapes::surfaceOf(mesh);
        ASSERT_TRUE(levelshapes::openEdges(surface.positions, surface.triangles).empty());
        const Triangles fewer = reduced(surface, surface.triangles, surface.triangles.size() / 3 / 4, 5);
        EXPECT_LT(fewer.size(), surface.triangles.size() / 2);
        EXPECT_TRUE(levelshapes::openEdges(surface.positions, fewer).empty());
    }
}

TEST(ReductionTest, TheNumberOfTrianglesIsMet)
{
    const Surface surface = levelshapes::surfaceOf(levelshapes::ball(24, 5));
    const std::size_t most = surface.triangles.size() / 3 / 10;
    const std::size_t count = reduced(surface, surface.triangles, most, 5).size() / 3;
    EXPECT_LE(count, most);
    EXPECT_GT(count, most * 8 / 10);
}

TEST(ReductionTest, VerticesThatAreEqualInEverythingAreOne)
{
    const osg::Mesh grid = levelshapes::plane(8, 4);
    osg::Mesh soup;
    std::vector<osg::Vec3f> positions;
    Triangles triangles;
    for (const std::uint32_t corner : grid.triangles) {
        triangles.push_back(static_cast<std::uint32_t>(positions.size()));
        positions.push_back(grid.positions[corner]);
        if (positions.size() % 2 == 0 && positions.back().z == 0)
            positions.back().z = -0.0f;
    }
    soup.positions = positions;
    soup.triangles = triangles;
    const Surface surface = levelshapes::surfaceOf(soup);
    EXPECT_EQ(surface.positions.size(), 81u);
    EXPECT_EQ(reduced(surface, surface.triangles, 0, 1e-4).size() / 3, 30u);
    soup.normals = std::vector<osg::Vec3f>(positions.size(), {0, 0, 1});
    EXPECT_EQ(levelshapes::surfaceOf(soup).positions.size(), 81u);
    std::vector<osg::Vec3f> different(positions.size(), {0, 0, 1});
    different[5] = {0, 1, 0};
    soup.normals = different;
    EXPECT_EQ(levelshapes::surfaceOf(soup).positions.size(), 82u);
}

TEST(ReductionTest, NumbersLeadBackIntoTheFile)
{
    osg::Mesh mesh = levelshapes::plane(1, 4);
    std::vector<osg::Vec3f> positions(7, {9, 9, 9}); // that nothing uses
    positions.insert(positions.end(), mesh.positions.begin(), mesh.positions.end());
    Triangles triangles;
    for (const std::uint32_t corner : mesh.triangles)
        triangles.push_back(corner + 7);
    triangles.insert(triangles.end(), {7, 8, 7}); // no triangle
    mesh.positions = positions;
    mesh.triangles = triangles;
    const Surface surface = levelshapes::surfaceOf(mesh);
    EXPECT_EQ(surface.positions.size(), 4u);
    triangles.resize(6);
    EXPECT_EQ(surface.inFile(surface.triangles), triangles);
    EXPECT_DOUBLE_EQ(sizeOf(surface), 4);
}

TEST(ReductionTest, NothingBecomesNothing)
{
    EXPECT_TRUE(reduced({}, {}, 0, 1).empty());
    EXPECT_EQ(sizeOf({}), 0);
}

} // namespace
