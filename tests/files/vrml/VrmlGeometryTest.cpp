#include "tests/files/vrml/VrmlTest.h"

#include <cmath>
#include <set>

namespace
{

using osg::Color3f;
using osg::Color4f;
using osg::Vec2f;
using osg::Vec3f;
using testing::ElementsAre;
using testing::IsEmpty;

using VrmlGeometryTest = VrmlTest;

constexpr float half = 0.70710678f;

void expectNear(const Vec3f& a, const Vec3f& b)
{
    EXPECT_NEAR(a.x, b.x, 1e-5);
    EXPECT_NEAR(a.y, b.y, 1e-5);
    EXPECT_NEAR(a.z, b.z, 1e-5);
}

Vec3f minus(const Vec3f& a, const Vec3f& b)
{
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}

Vec3f cross(const Vec3f& a, const Vec3f& b)
{
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

double dot(const Vec3f& a, const Vec3f& b)
{
    return double(a.x) * b.x + double(a.y) * b.y + double(a.z) * b.z;
}

/// What a closed mesh encloses; positive when its front is outside.
double volumeOf(const osg::Mesh& mesh)
{
    double six = 0;
    for (std::size_t i = 0; i < mesh.triangles.size(); i += 3)
        six += dot(mesh.positions[mesh.triangles[i]],
                   cross(mesh.positions[mesh.triangles[i + 1]], mesh.positions[mesh.triangles[i + 2]]));
    return six / 6;
}

/// Each normal lies on the front side of the triangles that have it.
void expectNormalsOutside(const osg::Mesh& mesh)
{
    for (std::size_t i = 0; i < mesh.triangles.size(); ++i) {
        const std::size_t first = i - i % 3;
        const Vec3f& a = mesh.positions[mesh.triangles[first]];
        const Vec3f front = cross(minus(mesh.positions[mesh.triangles[first + 1]], a),
                                  minus(mesh.positions[mesh.triangles[first + 2]], a));
        const Vec3f& normal = mesh.normals[mesh.triangles[i]];
        EXPECT_NEAR(dot(normal, normal), 1, 1e-5);
        EXPECT_GT(dot(normal, front), 0);
    }
}

/// Two squares that meet at a right angle along x = 0, z = 0.
#define ROOF "coord Coordinate { point [ 0 0 0 0 1 0 1 1 0 1 0 0 0 1 -1 0 0 -1 ] } coordIndex [ 0 3 2 1 -1 0 1 4 5 ] "

TEST_F(VrmlGeometryTest, AConcaveFaceIsCutWhereItIsInside)
{
    const osg::Mesh& dart = meshOfGeometry("IndexedFaceSet { convex FALSE coord Coordinate { point [ 0 0 5, 4 0 5, "
                                           "1 1 5, 0 4 5 ] } coordIndex [ 0 1 2 3 ] }");
    ASSERT_EQ(dart.triangles.size(), 6u);
    double area = 0;
    for (std::size_t i = 0; i < 6; i += 3) {
        const Vec3f& a = dart.positions[dart.triangles[i]];
        const double twice =
            cross(minus(dart.positions[dart.triangles[i + 1]], a), minus(dart.positions[dart.triangles[i + 2]], a)).z;
        EXPECT_GT(twice, 0);
        area += twice / 2;
    }
    EXPECT_NEAR(area, 4, 1e-6);
}

TEST_F(VrmlGeometryTest, FacesBeyondTheCreaseAngleKeepTheirNormals)
{
    const osg::Mesh& roof = meshOfGeometry("IndexedFaceSet { creaseAngle 1.5 " ROOF "}");
    EXPECT_EQ(roof.positions.size(), 8u);
    EXPECT_EQ(roof.triangles.size(), 12u);
    for (std::size_t i = 0; i < roof.normals.size(); ++i)
        EXPECT_TRUE(roof.normals[i] == (Vec3f{0, 0, 1}) || roof.normals[i] == (Vec3f{-1, 0, 0}));
}

TEST_F(VrmlGeometryTest, FacesWithinTheCreaseAngleShareNormalsWhereTheyMeet)
{
    const osg::Mesh& roof = meshOfGeometry("IndexedFaceSet { creaseAngle 1.6 " ROOF "}");
    ASSERT_EQ(roof.positions.size(), 6u);
    for (std::size_t i = 0; i < 6; ++i) {
        const Vec3f& p = roof.positions[i];
        expectNear(roof.normals[i], p.x > 0 ? Vec3f{0, 0, 1} : p.z < 0 ? Vec3f{-1, 0, 0} : Vec3f{-half, 0, half});
    }
}

TEST_F(VrmlGeometryTest, FacesThatRunClockwiseAreTurnedRound)
{
    const osg::Mesh& roof = meshOfGeometry("IndexedFaceSet { ccw FALSE " ROOF "}");
    expectNormalsOutside(roof);
    for (const Vec3f& normal : roof.normals)
        EXPECT_TRUE(normal == (Vec3f{0, 0, -1}) || normal == (Vec3f{1, 0, 0}));
}

TEST_F(VrmlGeometryTest, GivenNormalsOfVerticesKeepThePointsAsTheyAre)
{
    const osg::Mesh& roof = meshOfGeometry("IndexedFaceSet { " ROOF
                                           "normal Normal { vector [ 0 0 1 0 1 0 1 0 0 0 0 -1 0 -1 0 -1 0 0 ] } }");
    EXPECT_THAT(list(roof.positions), ElementsAre(Vec3f{0, 0, 0}, Vec3f{0, 1, 0}, Vec3f{1, 1, 0}, Vec3f{1, 0, 0},
                                                  Vec3f{0, 1, -1}, Vec3f{0, 0, -1}));
    EXPECT_THAT(list(roof.normals), ElementsAre(Vec3f{0, 0, 1}, Vec3f{0, 1, 0}, Vec3f{1, 0, 0}, Vec3f{0, 0, -1},
                                                Vec3f{0, -1, 0}, Vec3f{-1, 0, 0}));
}

TEST_F(VrmlGeometryTest, NormalsAndColoursOfFacesFollowTheirIndices)
{
    const osg::Mesh& roof =
        meshOfGeometry("IndexedFaceSet { " ROOF "normalPerVertex FALSE normalIndex [ 1 0 ] normal Normal { vector "
                       "[ -1 0 0 0 0.6 0.8 ] } colorPerVertex FALSE color Color { color [ 1 0 0 0 0.5 1 ] } }");
    ASSERT_EQ(roof.positions.size(), 8u);
    for (std::size_t i = 0; i < 8; ++i) {
        const bool isFirst = roof.normals[i] == Vec3f{0, 0.6f, 0.8f};
        EXPECT_TRUE(isFirst || roof.normals[i] == (Vec3f{-1, 0, 0}));
        EXPECT_EQ(roof.colors[i], isFirst ? (Color4f{1, 0, 0, 1}) : (Color4f{0, 0.5f, 1, 1}));
        EXPECT_EQ(roof.positions[i].x > 0 || roof.positions[i].z < 0,
                  isFirst ? roof.positions[i].x > 0 : roof.positions[i].z < 0);
    }
}

TEST_F(VrmlGeometryTest, ColoursAndTextureCoordinatesOfCornersFollowTheirIndices)
{
    const osg::Mesh& one = meshOfGeometry(
        "IndexedFaceSet { coord Coordinate { point [ 1 0 0 2 0 0 1 1 0 ] } coordIndex [ 0 1 2 -1 ] colorIndex [ 1 1 0 "
        "-1 ] color Color { color [ 0.25 0 0 0 0.75 0 ] } texCoordIndex [ 2 0 1 ] texCoord TextureCoordinate { point [ "
        "0 0.5 1 0.25 0.75 1 ] } }");
    EXPECT_THAT(list(one.positions), ElementsAre(Vec3f{1, 0, 0}, Vec3f{2, 0, 0}, Vec3f{1, 1, 0}));
    EXPECT_THAT(list(one.colors),
                ElementsAre(Color4f{0, 0.75f, 0, 1}, Color4f{0, 0.75f, 0, 1}, Color4f{0.25f, 0, 0, 1}));
    EXPECT_THAT(list(one.texCoords), ElementsAre(Vec2f{0.75f, 1}, Vec2f{0, 0.5f}, Vec2f{1, 0.25f}));
}

TEST_F(VrmlGeometryTest, ColoursStandInsteadOfTheDiffuseColour)
{
    ASSERT_TRUE(readScene("Shape { appearance Appearance { material Material { diffuseColor 1 0 0 transparency 0.5 } } "
                          "geometry PointSet { coord Coordinate { point 1 2 3 } color Color { color [ 0 1 0 ] } } }"));
    const osg::NodePtr shape = root()->getChild(0);
    EXPECT_EQ(material(shape)->getDiffuse(), (Color3f{1, 1, 1}));
    EXPECT_EQ(material(shape)->getTransparency(), 0.5f);
    EXPECT_THAT(list(mesh(shape).colors), ElementsAre(Color4f{0, 1, 0, 1}));
    EXPECT_THAT(list(mesh(shape).points), ElementsAre(0u));
}

TEST_F(VrmlGeometryTest, LinesHaveTheEmissiveColour)
{
    ASSERT_TRUE(readScene("Shape { appearance Appearance { material Material { emissiveColor 0 0 0.5 } } geometry "
                          "IndexedLineSet { coord Coordinate { point [ 1 0 0 2 0 0 2 3 0 ] } coordIndex [ 0 1 2 -1 2 0 "
                          "] } }"));
    const osg::NodePtr shape = root()->getChild(0);
    EXPECT_EQ(material(shape)->getDiffuse(), (Color3f{0, 0, 0.5f}));
    EXPECT_THAT(list(mesh(shape).positions),
                ElementsAre(Vec3f{1, 0, 0}, Vec3f{2, 0, 0}, Vec3f{2, 3, 0}, Vec3f{2, 3, 0}, Vec3f{1, 0, 0}));
    EXPECT_THAT(list(mesh(shape).lines), ElementsAre(0u, 1u, 1u, 2u, 3u, 4u));
}

TEST_F(VrmlGeometryTest, EachLineHasItsColour)
{
    const osg::Mesh& lines = meshOfGeometry(
        "IndexedLineSet { coord Coordinate { point [ 1 0 0 2 0 0 2 3 0 ] } coordIndex [ 0 1 -1 1 2 -1 ] colorPerVertex "
        "FALSE colorIndex [ 1 0 ] color Color { color [ 0.5 0 0 0 0.5 0 ] } }");
    EXPECT_THAT(list(lines.colors), ElementsAre(Color4f{0, 0.5f, 0, 1}, Color4f{0, 0.5f, 0, 1}, Color4f{0.5f, 0, 0, 1},
                                                Color4f{0.5f, 0, 0, 1}));
}

TEST_F(VrmlGeometryTest, WhatPointsBeyondIsLeftOutWithAWord)
{
    const auto result = readScene("Shape { geometry IndexedFaceSet { coord Coordinate { point [ 0 0 1 1 0 1 0 1 1 ] } "
                                  "coordIndex [ 0 1 2 -1 0 1 7 -1 ] color Color { color [ 1 0 0 ] } } }");
    ASSERT_TRUE(result);
    EXPECT_EQ(mesh(root()->getChild(0)).triangles.size(), 3u);
    EXPECT_THAT(list(mesh(root()->getChild(0)).colors), IsEmpty());
    EXPECT_THAT(
        texts(result.warnings),
        ElementsAre(QStringLiteral("1 faces with corners beyond the 3 points were left out @ line 2, column 18"),
                    QStringLiteral("the colours were left out: there are only 1 @ line 2, column 18")));
}

TEST_F(VrmlGeometryTest, ABoxHasItsSize)
{
    const osg::Mesh& box = meshOfGeometry("Box { size 2 3 5 }");
    EXPECT_EQ(box.triangles.size(), 36u);
    EXPECT_NEAR(volumeOf(box), 30, 1e-4);
    expectNormalsOutside(box);
}

/// A body of 32 sides has this part of the round one.
const double roundness = 16 * std::sin(std::acos(-1.0) / 16) / std::acos(-1.0);

TEST_F(VrmlGeometryTest, RoundBodiesHaveTheirSizes)
{
    const double pi = std::acos(-1.0);
    EXPECT_NEAR(volumeOf(meshOfGeometry("Cylinder { radius 2 height 5 }")), pi * 20 * roundness, 1e-3);
    expectNormalsOutside(mesh(root()->getChild(0)));
    EXPECT_NEAR(volumeOf(meshOfGeometry("Cone { bottomRadius 3 height 4 }")), pi * 12 * roundness, 1e-3);
    EXPECT_NEAR(volumeOf(meshOfGeometry("Sphere { radius 3 }")), pi * 36, pi * 36 * 0.03);
    expectNormalsOutside(mesh(root()->getChild(0)));
    EXPECT_EQ(meshOfGeometry("Cylinder { top FALSE bottom FALSE }").triangles.size(), 3u * 64u);
}

TEST_F(VrmlGeometryTest, AGridRisesAlongY)
{
    const osg::Mesh& grid = meshOfGeometry("ElevationGrid { xDimension 3 zDimension 2 xSpacing 2 zSpacing 5 height [ 1 "
                                           "1 1 1 1 1 ] creaseAngle 3 colorPerVertex FALSE color Color { color [ 1 0 0 "
                                           "0 1 0 ] } }");
    EXPECT_EQ(grid.triangles.size(), 12u);
    std::set<std::pair<float, float>> places;
    for (std::size_t i = 0; i < grid.positions.size(); ++i) {
        places.insert({grid.positions[i].x, grid.positions[i].z});
        EXPECT_EQ(grid.positions[i].y, 1);
        EXPECT_EQ(grid.normals[i], (Vec3f{0, 1, 0}));
        EXPECT_TRUE(grid.positions[i].x == 2 || grid.colors[i].red == (grid.positions[i].x < 2 ? 1 : 0));
    }
    EXPECT_EQ(places, (std::set<std::pair<float, float>>{{0, 0}, {0, 5}, {2, 0}, {2, 5}, {4, 0}, {4, 5}}));
    expectNormalsOutside(grid);
}

TEST_F(VrmlGeometryTest, AnExtrusionFollowsItsSpine)
{
    const osg::Mesh& bar =
        meshOfGeometry("Extrusion { crossSection [ 1 2 1 -2 -1 -2 -1 2 1 2 ] spine [ 5 0 0 5 3 0 5 7 "
                       "0 ] scale [ 1 1 1 1 0.5 0.5 ] }");
    // A straight part of 2 x 4 x 3, and a part of height 4 that gets half as wide.
    EXPECT_NEAR(volumeOf(bar), 24 + 4.0 / 3 * (8 + 4 + 2), 1e-3);
    expectNormalsOutside(bar);
}

TEST_F(VrmlGeometryTest, AnExtrusionBendsWithItsSpine)
{
    const osg::Mesh& bend = meshOfGeometry("Extrusion { spine [ 0 0 0 9 0 0 9 9 0 ] orientation 0 1 0 0 }");
    EXPECT_GT(volumeOf(bend), 0);
    for (std::size_t i = 0; i < bend.positions.size(); ++i)
        EXPECT_LE(std::abs(bend.positions[i].z), 1.0001f);
}

TEST_F(VrmlGeometryTest, SizesThatAreNoneAreToldOf)
{
    const auto result = readScene("Shape { geometry Box { size 0 1 1 } } Shape { geometry Box { size 1 2 3 } } Shape { "
                                  "geometry ElevationGrid { xDimension 90000 zDimension 90000 height [ 1 ] } } Shape { "
                                  "geometry Extrusion { spine [ 1 2 3 ] } }");
    EXPECT_EQ(root()->getNChildren(), 1u);
    EXPECT_THAT(texts(result.warnings),
                ElementsAre(QStringLiteral("the size of this body is not above 0 @ line 2, column 18"),
                            QStringLiteral("there are not enough heights for this grid @ line 2, column 94"),
                            QStringLiteral("an extrusion needs two points of spine and section at least @ line 2, "
                                           "column 178")));
}

} // namespace
