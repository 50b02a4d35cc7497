#include "scene/Tangents.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace
{

/// The unit square in the plane z = 0, seen from above.
osg::Mesh square(const std::vector<osg::Vec2f>& texCoords)
{
    osg::Mesh mesh;
    mesh.positions = std::vector<osg::Vec3f>{{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}};
    mesh.normals = std::vector<osg::Vec3f>(4, {0, 0, 2});
    mesh.triangles = std::vector<std::uint32_t>{0, 1, 2, 0, 2, 3};
    mesh.texCoords = texCoords;
    return mesh;
}

void expectAll(const osg::Mesh& mesh, const osg::Vec3f& direction, float side)
{
    const std::vector<osg::Tangent> tangents = osg::tangentsOf(mesh, mesh.texCoords);
    ASSERT_EQ(tangents.size(), mesh.positions.size());
    for (const osg::Tangent& tangent : tangents) {
        EXPECT_NEAR(tangent.direction.x, direction.x, 1e-6);
        EXPECT_NEAR(tangent.direction.y, direction.y, 1e-6);
        EXPECT_NEAR(tangent.direction.z, direction.z, 1e-6);
        EXPECT_EQ(tangent.side, side);
    }
}

TEST(Tangents, PointAlongUAndTellWhereVGrows)
{
    expectAll(square({{0, 0}, {1, 0}, {1, 1}, {0, 1}}), {1, 0, 0}, 1);
    expectAll(square({{0, 0}, {3, 0}, {3, 0.5f}, {0, 0.5f}}), {1, 0, 0}, 1);
    expectAll(square({{0, 0}, {0, 1}, {-1, 1}, {-1, 0}}), {0, -1, 0}, 1); // turned
    expectAll(square({{1, 0}, {0, 0}, {0, 1}, {1, 1}}), {-1, 0, 0}, -1);  // mirrored along u
    expectAll(square({{0, 1}, {1, 1}, {1, 0}, {0, 0}}), {1, 0, 0}, -1);   // along v
}

TEST(Tangents, AreAtRightAnglesToTheNormalAndOfLengthOne)
{
    osg::Mesh mesh = square({{0, 0}, {1, 0}, {1, 1}, {0, 1}});
    mesh.normals = std::vector<osg::Vec3f>(4, {3, 0, 4});
    expectAll(mesh, {0.8f, 0, -0.6f}, 1);
}

TEST(Tangents, LargeTrianglesCountMore)
{
    // The larger triangle has the picture upright, the smaller one turned by a right angle.
    osg::Mesh mesh;
    mesh.positions = std::vector<osg::Vec3f>{{0, 0, 0}, {3, 0, 0}, {0, 1, 0}, {-1, 0, 0}};
    mesh.normals = std::vector<osg::Vec3f>(4, {0, 0, 1});
    mesh.triangles = std::vector<std::uint32_t>{0, 1, 2, 0, 2, 3};
    mesh.texCoords = std::vector<osg::Vec2f>{{0, 0}, {3, 0}, {0, 1}, {0, 1}};
    const osg::Tangent tangent = osg::tangentsOf(mesh, mesh.texCoords)[1];
    EXPECT_NEAR(tangent.direction.x, 1, 1e-6);
    const osg::Tangent shared = osg::tangentsOf(mesh, mesh.texCoords)[0];
    EXPECT_GT(shared.direction.x, 0.9f);
}

TEST(Tangents, WithoutAreaOfTextureAnyAtRightAnglesIsGiven)
{
    const float infinite = std::numeric_limits<float>::infinity();
    for (const osg::Vec2f& corner : {osg::Vec2f{0, 0}, osg::Vec2f{infinite, infinite}}) {
        const osg::Mesh mesh = square(std::vector<osg::Vec2f>(4, corner));
        for (const osg::Tangent& tangent : osg::tangentsOf(mesh, mesh.texCoords)) {
            EXPECT_NEAR(tangent.direction.z, 0, 1e-6);
            EXPECT_NEAR(std::hypot(tangent.direction.x, tangent.direction.y), 1, 1e-6);
            EXPECT_EQ(tangent.side, 1);
        }
    }
    osg::Mesh mesh = square({{0, 0}, {1, 0}, {1, 1}, {0, 1}});
    mesh.normals = std::vector<osg::Vec3f>(4, {0, 0, 0});
    EXPECT_EQ(osg::tangentsOf(mesh, mesh.texCoords)[0].direction, (osg::Vec3f{1, 0, 0}));
}

TEST(Tangents, AMeshWithoutNormalsHasNone)
{
    osg::Mesh mesh = square({{0, 0}, {1, 0}, {1, 1}, {0, 1}});
    mesh.normals = {};
    EXPECT_TRUE(osg::tangentsOf(mesh, mesh.texCoords).empty());
}

} // namespace
