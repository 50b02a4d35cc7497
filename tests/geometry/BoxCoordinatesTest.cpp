#include "geometry/BoxCoordinates.h"

#include "tests/support/BookmarkScene.h"

#include <gmock/gmock.h>

#include <array>
#include <cmath>
#include <limits>
#include <set>

using testing::ElementsAre;

namespace
{

struct Case {
    const char* side;
    osg::Vec3f towardsU, towardsV; ///< where u and v run on it
};

/// As somebody sees the six sides who walks around with Z upwards, and bows over the part with X to the right.
const Case cases[] = {{"+X", {0, 1, 0}, {0, 0, 1}}, {"-X", {0, -1, 0}, {0, 0, 1}}, {"+Y", {-1, 0, 0}, {0, 0, 1}},
                      {"-Y", {1, 0, 0}, {0, 0, 1}}, {"+Z", {1, 0, 0}, {0, 1, 0}},  {"-Z", {1, 0, 0}, {0, -1, 0}}};

osg::Vec3f cross(const osg::Vec3f& a, const osg::Vec3f& b)
{
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

/// A triangle with a right angle at `corner`.
osg::Mesh corner(const osg::Vec3f& place, const osg::Vec3f& a, const osg::Vec3f& b)
{
    osg::Mesh mesh;
    mesh.positions = std::vector<osg::Vec3f>{
        place, {place.x + a.x, place.y + a.y, place.z + a.z}, {place.x + b.x, place.y + b.y, place.z + b.z}};
    mesh.triangles = std::vector<std::uint32_t>{0, 1, 2};
    return mesh;
}

osg::Mesh mapped(const osg::Mesh& mesh)
{
    return geometry::withBoxCoordinates(mesh);
}

/// Twice the area of a triangle in the picture; below 0 where it is mirrored.
float areaInPicture(const osg::Mesh& mesh, std::size_t triangle)
{
    const osg::Vec2f& a = mesh.texCoords[mesh.triangles[3 * triangle]];
    const osg::Vec2f& b = mesh.texCoords[mesh.triangles[3 * triangle + 1]];
    const osg::Vec2f& c = mesh.texCoords[mesh.triangles[3 * triangle + 2]];
    return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

/// The mesh of a triangle in the plane with this normal, around the origin.
osg::Mesh facing(const osg::Vec3f& normal)
{
    const osg::Vec3f away = std::abs(normal.x) < std::abs(normal.z) ? osg::Vec3f{1, 0, 0} : osg::Vec3f{0, 0, 1};
    const osg::Vec3f a = cross(away, normal);
    return corner({0, 0, 0}, a, cross(normal, a));
}

} // namespace

TEST(BoxCoordinates, EachSideIsUprightUnmirroredAndAMetreAPicture)
{
    for (const Case& each : cases) {
        const osg::Vec3f place{100, 200, 300};
        const osg::Mesh mesh = mapped(corner(place, each.towardsU, each.towardsV));
        ASSERT_EQ(mesh.texCoords.size(), 3u) << each.side;
        const osg::Vec2f &at = mesh.texCoords[0], &alongU = mesh.texCoords[1], &alongV = mesh.texCoords[2];
        EXPECT_NEAR(alongU.x - at.x, 0.001F, 1e-6F) << each.side;
        EXPECT_NEAR(alongU.y - at.y, 0, 1e-6F) << each.side;
        EXPECT_NEAR(alongV.x - at.x, 0, 1e-6F) << each.side;
        EXPECT_NEAR(alongV.y - at.y, 0.001F, 1e-6F) << each.side;
        EXPECT_GT(areaInPicture(mesh, 0), 0) << each.side << " is seen from outside";
    }
}

TEST(BoxCoordinates, TheOriginOfThePartIsACornerOfAPicture)
{
    const osg::Mesh mesh = mapped(corner({1000, 2000, 500}, {1, 0, 0}, {0, 1, 0}));
    EXPECT_FLOAT_EQ(mesh.texCoords[0].x, 1);
    EXPECT_FLOAT_EQ(mesh.texCoords[0].y, 2);
}

TEST(BoxCoordinates, VerticesOfABoxAreSplitOnceForEachSide)
{
    osg::Mesh before = *bookmarkscene::box({0, 0, 0}, {10, 20, 30});
    std::vector<osg::Vec3f> normals;
    std::vector<osg::Color4f> colors;
    std::vector<float> occlusion;
    for (std::size_t i = 0; i < 8; ++i) {
        normals.push_back({static_cast<float>(i), 1, 0});
        colors.push_back({static_cast<float>(i), 0, 0, 1});
        occlusion.push_back(static_cast<float>(i) / 8);
    }
    before.normals = std::move(normals);
    before.colors = std::move(colors);
    before.occlusion = std::move(occlusion);
    before.faces = std::vector<osg::FaceRange>{{0, 2}, {2, 10}};
    before.lines = std::vector<std::uint32_t>{0, 7, 7, 3};
    before.points = std::vector<std::uint32_t>{5};
    before.brep = std::vector<std::byte>{std::byte{1}};
    before.texCoords1 = std::vector<osg::Vec2f>(8, osg::Vec2f{0.5F, 0.25F});
    const osg::Mesh mesh = mapped(before);
    EXPECT_EQ(mesh.positions.size(), 24u);
    EXPECT_EQ(mesh.texCoords.size(), 24u);
    EXPECT_EQ(mesh.texCoords1.size(), 24u);
    EXPECT_EQ(mesh.faces, before.faces);
    EXPECT_EQ(mesh.lines, before.lines);
    EXPECT_EQ(mesh.points, before.points);
    EXPECT_EQ(mesh.brep, before.brep);
    ASSERT_EQ(mesh.triangles.size(), before.triangles.size());
    for (std::size_t i = 0; i < mesh.triangles.size(); ++i) {
        const std::uint32_t was = before.triangles[i], is = mesh.triangles[i];
        EXPECT_EQ(mesh.positions[is], before.positions[was]);
        EXPECT_EQ(mesh.normals[is], before.normals[was]);
        EXPECT_EQ(mesh.colors[is], before.colors[was]);
        EXPECT_EQ(mesh.occlusion[is], before.occlusion[was]);
    }
    for (std::size_t i = 0; i < 12; ++i)
        EXPECT_GT(areaInPicture(mesh, i), 0) << i;
    EXPECT_EQ(mapped(before), mesh) << "the same each time";
}

TEST(BoxCoordinates, TrianglesOfOneSideShareTheirVertices)
{
    osg::Mesh before;
    before.positions = std::vector<osg::Vec3f>{{0, 0, 0}, {10, 0, 0}, {10, 10, 3}, {0, 10, 3}};
    before.triangles = std::vector<std::uint32_t>{0, 1, 2, 0, 2, 3};
    const osg::Mesh mesh = mapped(before);
    EXPECT_EQ(mesh.positions, before.positions);
    EXPECT_EQ(mesh.triangles, before.triangles);
}

TEST(BoxCoordinates, TheNearestAxisCountsAndTiesAreDecidedAlike)
{
    const auto isSeenFromX = [](const osg::Vec3f& normal) {
        const osg::Mesh mesh = mapped(facing(normal));
        return std::abs(mesh.texCoords[1].x - mesh.positions[1].y / 1000) < 1e-7F &&
               std::abs(mesh.texCoords[2].y - mesh.positions[2].z / 1000) < 1e-7F;
    };
    EXPECT_TRUE(isSeenFromX({1, 0.9F, 0.5F}));
    EXPECT_FALSE(isSeenFromX({0.9F, 1, 0.5F}));
    EXPECT_FALSE(isSeenFromX({0.9F, 0.5F, 1}));
    // A chamfer at 45 degrees is one side, however its triangles are rounded.
    EXPECT_TRUE(isSeenFromX({1, 1, 0}));
    EXPECT_TRUE(isSeenFromX({1, 1.00005F, 0}));
    EXPECT_TRUE(isSeenFromX({1, 0, 1.00005F}));
    EXPECT_FALSE(isSeenFromX({1, 0, 1.001F}));
}

TEST(BoxCoordinates, TrianglesWithoutAreaSplitNothing)
{
    osg::Mesh before;
    before.positions = std::vector<osg::Vec3f>{{0, 0, 0}, {0, 10, 0}, {0, 0, 10}, {0, 20, 0}};
    before.triangles = std::vector<std::uint32_t>{0, 1, 2, 0, 1, 3};
    const osg::Mesh mesh = mapped(before);
    EXPECT_EQ(mesh.positions, before.positions);
    EXPECT_THAT(mesh.texCoords.span(),
                ElementsAre(osg::Vec2f{0, 0}, osg::Vec2f{0.01F, 0}, osg::Vec2f{0, 0.01F}, osg::Vec2f{0, 0.02F}))
        << "the last one is seen from above";
}

TEST(BoxCoordinates, MeshesThatAreWrongDoNoHarm)
{
    const float none = std::numeric_limits<float>::quiet_NaN(), far = std::numeric_limits<float>::infinity();
    osg::Mesh before;
    before.positions = std::vector<osg::Vec3f>{{none, 0, 0}, {0, far, 0}, {3e38F, -3e38F, 10}, {0, 20, 0}, {1, 1, 1}};
    before.triangles = std::vector<std::uint32_t>{0, 1, 2, 2, 3, 4, 3, 4, 77, 1};
    const osg::Mesh mesh = mapped(before);
    ASSERT_EQ(mesh.texCoords.size(), mesh.positions.size());
    for (const osg::Vec2f& place : mesh.texCoords) {
        EXPECT_TRUE(std::isfinite(place.x) && std::isfinite(place.y));
    }
    EXPECT_EQ(mesh.triangles, before.triangles);
    osg::Mesh lines = before;
    lines.triangles = {};
    lines.lines = std::vector<std::uint32_t>{0, 1};
    EXPECT_EQ(mapped(lines), lines);
}
