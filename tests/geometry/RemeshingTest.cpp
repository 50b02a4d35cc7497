#include "geometry/Remeshing.h"

#include <gmock/gmock.h>

using testing::ElementsAre;

namespace
{

/// A square of 10 by 10, and a vertex beside it.
osg::Mesh square()
{
    osg::Mesh mesh;
    mesh.positions = std::vector<osg::Vec3f>{{0, 0, 0}, {10, 0, 0}, {10, 10, 0}, {0, 10, 0}, {20, 0, 0}};
    mesh.triangles = std::vector<std::uint32_t>{0, 1, 2, 0, 2, 3};
    return mesh;
}

/// The same square as it comes from its exact surface.
osg::Mesh made()
{
    osg::Mesh mesh = square();
    mesh.positions = std::vector<osg::Vec3f>{{0, 0, 0}, {10, 0, 0}, {10, 10, 0}, {0, 10, 0}};
    mesh.normals = std::vector<osg::Vec3f>(4, osg::Vec3f{0, 0, 1});
    return mesh;
}

} // namespace

TEST(Remeshing, LinesAndPointsKeepTheirVerticesWithBothSetsOfTextureCoordinates)
{
    osg::Mesh old = square();
    old.texCoords = std::vector<osg::Vec2f>{{0, 0}, {1, 0}, {1, 1}, {0, 1}, {7, 8}};
    old.texCoords1 = std::vector<osg::Vec2f>{{0, 0}, {2, 0}, {2, 2}, {0, 2}, {5, 6}};
    old.lines = std::vector<std::uint32_t>{1, 4};
    old.points = std::vector<std::uint32_t>{4};
    const osg::Mesh mesh = geometry::remeshed(old, made());
    ASSERT_EQ(mesh.positions.size(), 6u);
    EXPECT_THAT(mesh.lines.span(), ElementsAre(4, 5));
    EXPECT_THAT(mesh.points.span(), ElementsAre(5));
    EXPECT_EQ(mesh.positions[5], (osg::Vec3f{20, 0, 0}));
    EXPECT_EQ(mesh.normals[5], (osg::Vec3f{0, 0, 1}));
    ASSERT_EQ(mesh.texCoords.size(), 6u);
    ASSERT_EQ(mesh.texCoords1.size(), 6u);
    EXPECT_EQ(mesh.texCoords[5], (osg::Vec2f{7, 8}));
    EXPECT_EQ(mesh.texCoords1[5], (osg::Vec2f{5, 6}));
    EXPECT_NEAR(mesh.texCoords1[2].x, 2, 1e-5F);
}

TEST(Remeshing, TheSecondSetComesAlone)
{
    osg::Mesh old = square();
    old.texCoords1 = std::vector<osg::Vec2f>{{0, 0}, {2, 0}, {2, 2}, {0, 2}, {5, 6}};
    const osg::Mesh mesh = geometry::remeshed(old, made());
    EXPECT_TRUE(mesh.texCoords.empty());
    ASSERT_EQ(mesh.texCoords1.size(), 4u);
    EXPECT_NEAR(mesh.texCoords1[2].y, 2, 1e-5F);
}

TEST(Remeshing, VerticesOfLinesHaveWhatTheTrianglesHave)
{
    osg::Mesh old = square();
    old.lines = std::vector<std::uint32_t>{4, 0};
    const osg::Mesh mesh = geometry::remeshed(old, made());
    EXPECT_EQ(mesh.positions.size(), 6u);
    EXPECT_EQ(mesh.normals.size(), 6u);
    EXPECT_TRUE(mesh.texCoords.empty() && mesh.texCoords1.empty());
}
