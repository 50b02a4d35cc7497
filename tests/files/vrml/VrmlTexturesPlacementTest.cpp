#include "tests/files/vrml/VrmlTexturesTest.h"

namespace
{

using osg::Color3f;
using osg::PhysicalSurface;
using osg::TextureSlot;
using osg::Vec2f;
using osg::Vec3f;
using testing::IsEmpty;
using VrmlTexturesPlacementTest = VrmlTexturesTest;

/// -C x S x R x C x T x Tc, step by step.
Vec2f transformed(const Vec2f& at, const Vec2f& center, double rotation, const Vec2f& scale, const Vec2f& translation)
{
    const double u = double(at.x) + translation.x + center.x, v = double(at.y) + translation.y + center.y;
    const double turnedU = std::cos(rotation) * u - std::sin(rotation) * v;
    const double turnedV = std::sin(rotation) * u + std::cos(rotation) * v;
    return {float(turnedU * scale.x - center.x), float(turnedV * scale.y - center.y)};
}

TEST_F(VrmlTexturesPlacementTest, ATextureTransformLeadsToTheCoordinatesOfTheStandard)
{
    struct Row {
        Vec2f center;
        double rotation;
        Vec2f scale, translation;
    };
    const double quarter = std::acos(0.0);
    for (const Row& row : {Row{{0, 0}, 0, {1, 1}, {0.25f, 0.5f}}, Row{{0, 0}, 0, {2, 3}, {0, 0}},
                           Row{{0.5f, 0.25f}, 0, {2, 3}, {0.125f, 0}}, Row{{0, 0}, 0.5, {1, 1}, {0, 0}},
                           Row{{0.5f, 0.5f}, 0.75, {2, 2}, {0.25f, 0.125f}}, Row{{0.5f, 0.5f}, quarter, {2, 3}, {0, 1}},
                           Row{{0.25f, 0}, -quarter, {-2, 3}, {0.5f, 1}}, Row{{0, 0}, 2.5, {1, -1}, {0, 0}},
                           Row{{0.5f, 0.5f}, 0, {-1, 1}, {0, 0}}}) {
        const QString fields =
            QStringLiteral("textureTransform TextureTransform { center %1 %2 rotation %3 scale %4 %5 "
                           "translation %6 %7 }")
                .arg(double(row.center.x))
                .arg(double(row.center.y))
                .arg(row.rotation, 0, 'g', 12)
                .arg(double(row.scale.x))
                .arg(double(row.scale.y))
                .arg(double(row.translation.x))
                .arg(double(row.translation.y));
        const PhysicalSurface surface = surfaceOf(pixelTexture(pixels[2]) + " " + fields.toUtf8());
        EXPECT_THAT(warnings(), IsEmpty()) << fields.toStdString();
        ASSERT_EQ(surface.textures.size(), 1u);
        for (const Vec2f& at : {Vec2f{0, 0}, Vec2f{1, 0}, Vec2f{0, 1}, Vec2f{0.75f, 0.5f}}) {
            const Vec2f expected = transformed(at, row.center, row.rotation, row.scale, row.translation);
            const Vec2f found = lookedUp(surface.textures.at(TextureSlot::BaseColor), at);
            EXPECT_NEAR(found.x, expected.x, 1e-5) << fields.toStdString();
            EXPECT_NEAR(found.y, expected.y, 1e-5) << fields.toStdString();
        }
    }
}

TEST_F(VrmlTexturesPlacementTest, ATransformThatShearsIsTold)
{
    surfaceOf(pixelTexture(pixels[2]) + " textureTransform TextureTransform { rotation 0.5 scale 1 3 }");
    ASSERT_EQ(warnings().size(), 1);
    EXPECT_TRUE(warnings()[0].startsWith(QLatin1String("a picture that is turned and stretched")));
}

TEST_F(VrmlTexturesPlacementTest, FacesWithoutCoordinatesTakeThemFromTheBoxAround)
{
    const char* const faces = "IndexedFaceSet { coord Coordinate { point [ 1 5 2 1 9 2 1 9 4 1 5 4 99 99 99 ] } "
                              "coordIndex [ 0 1 2 3 ] }";
    surfaceOf(pixelTexture(pixels[2]), faces);
    EXPECT_THAT(warnings(), IsEmpty());
    const Vec3f normal = {1, 0, 0};
    EXPECT_EQ(coordinatesAt({1, 5, 2}, normal), (Vec2f{0, 0}));
    EXPECT_EQ(coordinatesAt({1, 9, 2}, normal), (Vec2f{1, 0}));
    EXPECT_EQ(coordinatesAt({1, 9, 4}, normal), (Vec2f{1, 0.5f}));
    surfaceOf(paint, faces);
    EXPECT_TRUE(mesh().texCoords.empty()) << "nobody looks them up";
}

TEST_F(VrmlTexturesPlacementTest, OfEqualSidesOfTheBoxXComesBeforeY)
{
    surfaceOf(pixelTexture(pixels[2]), "IndexedFaceSet { coord Coordinate { point [ 0 0 0 2 0 0 2 2 0 0 2 0 ] } "
                                       "coordIndex [ 0 1 2 3 ] }");
    EXPECT_EQ(coordinatesAt({2, 0, 0}, {0, 0, 1}), (Vec2f{1, 0}));
    EXPECT_EQ(coordinatesAt({0, 2, 0}, {0, 0, 1}), (Vec2f{0, 1}));
}

TEST_F(VrmlTexturesPlacementTest, AGridIsCoveredOnce)
{
    surfaceOf(pixelTexture(pixels[2]),
              "ElevationGrid { xDimension 3 zDimension 2 xSpacing 2 zSpacing 5 height [ 0 0 0 0 "
              "0 0 ] }");
    EXPECT_EQ(coordinatesAt({0, 0, 0}, {0, 1, 0}), (Vec2f{0, 0}));
    EXPECT_EQ(coordinatesAt({2, 0, 5}, {0, 1, 0}), (Vec2f{0.5f, 1}));
    EXPECT_EQ(coordinatesAt({4, 0, 0}, {0, 1, 0}), (Vec2f{1, 0}));
}

TEST_F(VrmlTexturesPlacementTest, ABoxShowsThePictureUprightOnEachSide)
{
    surfaceOf(pixelTexture(pixels[2]), "Box { size 2 4 6 }");
    // The upper right corner of each picture, as seen from outside.
    EXPECT_EQ(coordinatesAt({1, 2, 3}, {0, 0, 1}), (Vec2f{1, 1}));
    EXPECT_EQ(coordinatesAt({-1, 2, -3}, {0, 0, -1}), (Vec2f{1, 1}));
    EXPECT_EQ(coordinatesAt({1, 2, -3}, {1, 0, 0}), (Vec2f{1, 1}));
    EXPECT_EQ(coordinatesAt({-1, 2, 3}, {-1, 0, 0}), (Vec2f{1, 1}));
    EXPECT_EQ(coordinatesAt({1, 2, -3}, {0, 1, 0}), (Vec2f{1, 1}));
    EXPECT_EQ(coordinatesAt({1, -2, 3}, {0, -1, 0}), (Vec2f{1, 1}));
    EXPECT_EQ(coordinatesAt({-1, -2, 3}, {0, 0, 1}), (Vec2f{0, 0}));
    EXPECT_EQ(coordinatesAt({1, -2, 3}, {1, 0, 0}), (Vec2f{0, 0}));
    surfaceOf(paint, "Box { }");
    EXPECT_TRUE(mesh().texCoords.empty());
}

TEST_F(VrmlTexturesPlacementTest, ACylinderIsWrappedFromTheBackToTheLeft)
{
    surfaceOf(pixelTexture(pixels[2]), "Cylinder { radius 2 height 6 }");
    EXPECT_EQ(coordinatesAt({0, -3, -2}, {0, 0, -1}), (Vec2f{0, 0}));
    EXPECT_EQ(coordinatesAt({-2, -3, 0}, {-1, 0, 0}), (Vec2f{0.25f, 0}));
    EXPECT_EQ(coordinatesAt({0, 3, 2}, {0, 0, 1}), (Vec2f{0.5f, 1}));
    EXPECT_EQ(coordinatesAt({2, 3, 0}, {1, 0, 0}), (Vec2f{0.75f, 1}));
    EXPECT_EQ(mesh().texCoords[64], (Vec2f{1, 0})) << "the other border meets the first one at the back";
    EXPECT_EQ(coordinatesAt({0, 3, -2}, {0, 1, 0}), (Vec2f{0.5f, 1})) << "the top, seen from above";
    EXPECT_EQ(coordinatesAt({2, 3, 0}, {0, 1, 0}), (Vec2f{1, 0.5f}));
    EXPECT_EQ(coordinatesAt({0, -3, 2}, {0, -1, 0}), (Vec2f{0.5f, 1})) << "the bottom, seen from below";
    EXPECT_EQ(coordinatesAt({0, -3, 0}, {0, -1, 0}), (Vec2f{0.5f, 0.5f}));
}

TEST_F(VrmlTexturesPlacementTest, AConeAndASphereAreWrappedLikewise)
{
    surfaceOf(pixelTexture(pixels[2]), "Cone { bottomRadius 3 height 4 }");
    const Vec3f left = {-0.8f, 0.6f, 0};
    EXPECT_EQ(coordinatesAt({-3, -2, 0}, left), (Vec2f{0.25f, 0}));
    EXPECT_EQ(coordinatesAt({0, 2, 0}, left), (Vec2f{0.25f, 1}));
    EXPECT_EQ(coordinatesAt({3, -2, 0}, {0, -1, 0}), (Vec2f{1, 0.5f}));
    surfaceOf(pixelTexture(pixels[2]), "Sphere { radius 1 }");
    EXPECT_EQ(coordinatesAt({-1, 0, 0}, {-1, 0, 0}), (Vec2f{0.25f, 0.5f}));
    EXPECT_EQ(coordinatesAt({0, 0, 1}, {0, 0, 1}), (Vec2f{0.5f, 0.5f}));
    EXPECT_EQ(coordinatesAt({0, -1, 0}, {0, -1, 0}).y, 0);
    EXPECT_EQ(coordinatesAt({0, 1, 0}, {0, 1, 0}).y, 1);
}

TEST_F(VrmlTexturesPlacementTest, AShapeThatSaysNotHowThePictureLiesIsTold)
{
    const PhysicalSurface surface = surfaceOf(paint + pixelTexture(pixels[2]), "Extrusion { }");
    EXPECT_THAT(surface.textures, IsEmpty());
    EXPECT_EQ(material()->getDiffuse(), (Color3f{0.5f, 0.25f, 0.125f}));
    ASSERT_EQ(warnings().size(), 1);
    EXPECT_TRUE(warnings()[0].startsWith(QLatin1String("a picture was left out: the shape says not how it lies")));
}

TEST_F(VrmlTexturesPlacementTest, LinesAndPointsShowNoPicture)
{
    for (const char* const geometry :
         {"IndexedLineSet { coord Coordinate { point [ 0 0 0 1 0 0 ] } coordIndex [ 0 1 ] }",
          "PointSet { coord Coordinate { point [ 0 0 0 ] } }"}) {
        EXPECT_THAT(surfaceOf(paint + pixelTexture(pixels[2]), geometry).textures, IsEmpty());
        EXPECT_THAT(warnings(), IsEmpty());
    }
}

TEST_F(VrmlTexturesPlacementTest, AGeometryUsedWithAndWithoutAPictureHasCoordinatesWhereItNeedsThem)
{
    ASSERT_TRUE(readScene("DEF a Shape { appearance DEF p Appearance { " + pixelTexture(pixels[2]) +
                          " } geometry DEF g Box { } } DEF b Shape { geometry USE g } DEF c Shape { appearance USE p "
                          "geometry USE g }"));
    EXPECT_EQ(ReaderTest::mesh(node({"a"})).texCoords.size(), 24u);
    EXPECT_TRUE(ReaderTest::mesh(node({"b"})).texCoords.empty());
    EXPECT_EQ(ReaderTest::mesh(node({"c"})).texCoords.data(), ReaderTest::mesh(node({"a"})).texCoords.data());
    EXPECT_TRUE(ReaderTest::material(node({"a"})) == ReaderTest::material(node({"c"})));
}

} // namespace
