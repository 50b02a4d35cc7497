#include "tests/render/StudioTest.h"

namespace render
{

namespace
{

class StudioTexturePicture : public StudioTest
{
protected:
    static QImage basePicture(const osg::Texture& texture)
    {
        osg::PhysicalSurface surface = dull();
        surface.textures[Slot::BaseColor] = texture;
        return picture(surface);
    }

    /// The colours of the four quarters of a wall: upper left, upper right, lower left, lower right.
    static std::string quartersOf(const QImage& image)
    {
        std::string result;
        for (const auto& [u, v] :
             {std::pair(0.3, 0.7), std::pair(0.7, 0.7), std::pair(0.3, 0.3), std::pair(0.7, 0.3)}) {
            const QRgb pixel = at(image, u, v);
            const int bright =
                (qRed(pixel) > 200 ? 1 : 0) + (qGreen(pixel) > 200 ? 1 : 0) + (qBlue(pixel) > 200 ? 1 : 0);
            result += bright > 1 ? 'w' : qRed(pixel) > 200 ? 'r' : qGreen(pixel) > 200 ? 'g' : 'b';
        }
        return result;
    }

    /// A normal tilted by 45 degrees towards the right (x) or the upper border (y) of the picture.
    static osg::Texture tilted(int x, int y) { return textureOf(QColor(128 + 90 * x, 128 + 90 * y, 218)); }

    static QImage tiltedPicture(const osg::Texture& texture, View view = View::Front)
    {
        osg::PhysicalSurface surface = dull();
        surface.textures[Slot::Normal] = texture;
        return picture(surface, directedLight(), view);
    }
};

constexpr double tilt = 0.236; // a third of the sine of 45 degrees
constexpr double quarterTurn = EIGEN_PI / 2;

} // namespace

TEST_F(StudioTexturePicture, StandsUprightOnItsCoordinates)
{
    EXPECT_EQ(quartersOf(basePicture(textureOf(quarters()))), "rgbw");
}

TEST_F(StudioTexturePicture, IsMultipliedWithFactorAndVertexColor)
{
    osg::PhysicalSurface surface = dull();
    surface.textures[Slot::BaseColor] = textureOf(QColor(128, 255, 255));
    const auto mesh = pictureWall();
    mesh->colors = std::vector<osg::Color4f>(4, {1, 1, 0, 1});
    const Root root = nodeOf(mesh, surfaceMaterial(surface, {1, 0.5f, 1}));
    expectColor(middle(draw(root, studioOptions(evenLight()))), 128, 128, 0, 2);
}

TEST_F(StudioTexturePicture, FollowsTheSetThatItNames)
{
    osg::PhysicalSurface surface = dull();
    surface.textures[Slot::BaseColor] = textureOf(quarters());
    surface.textures[Slot::BaseColor].set = 1;
    const auto mesh = pictureWall();
    mesh->texCoords1 = std::vector<osg::Vec2f>{{1, 0}, {0, 0}, {0, 1}, {1, 1}}; // mirrored
    const Root root = nodeOf(mesh, surfaceMaterial(surface));
    EXPECT_EQ(quartersOf(draw(root, studioOptions(evenLight()))), "grwb");
}

TEST_F(StudioTexturePicture, WithoutCoordinatesTheFactorStays)
{
    osg::PhysicalSurface surface = dull();
    surface.textures[Slot::BaseColor] = textureOf(QColor(255, 0, 0));
    surface.textures[Slot::Normal] = tilted(1, 0);
    const Root root = nodeOf(wall(0, 10), surfaceMaterial(surface, {0.5f, 0.5f, 0.5f}));
    expectColor(middle(draw(root, studioOptions(evenLight()))), 128, 128, 128, 2);
}

TEST_F(StudioTexturePicture, IsScaledTurnedAndMoved)
{
    osg::Texture texture = textureOf(quarters());
    texture.offset = {0.5f, 0};
    EXPECT_EQ(quartersOf(basePicture(texture)), "grwb");
    texture.offset = {0, 0.5f};
    EXPECT_EQ(quartersOf(basePicture(texture)), "bwrg");
    texture.offset = {0, 0};
    // Coordinates turn counter-clockwise about the upper left corner: what is right reads above.
    texture.rotation = float(quarterTurn);
    EXPECT_EQ(quartersOf(basePicture(texture)), "brwg");
    texture.rotation = 0;
    texture.scale = {2, 1}; // both columns within the left half
    const QImage twice = basePicture(texture);
    EXPECT_GT(qRed(at(twice, 0.1, 0.7)), 200);
    EXPECT_LT(qRed(at(twice, 0.4, 0.7)), 50);
    EXPECT_GT(qRed(at(twice, 0.6, 0.7)), 200);
    // Scaled along u first, then turned: the left half of the wall has both rows of the picture.
    texture.rotation = float(quarterTurn);
    const QImage turned = basePicture(texture);
    EXPECT_EQ(quartersOf(turned).size(), 4u);
    EXPECT_NE(at(turned, 0.1, 0.7), at(turned, 0.4, 0.7));
    EXPECT_EQ(at(turned, 0.1, 0.7), at(turned, 0.6, 0.7));
}

TEST_F(StudioTexturePicture, FarAwayItIsItsMeanAndDoesNotFlicker)
{
    QImage board(256, 256, QImage::Format_ARGB32);
    for (int i = 0; i < 256 * 256; ++i)
        board.setPixel(i % 256, i / 256, (i % 256 + i / 256) % 2 ? qRgb(255, 255, 255) : qRgb(0, 0, 0));
    osg::Texture texture = textureOf(board);
    texture.scale = {7, 7};
    const QImage image = basePicture(texture);
    for (int i = 0; i < 40; ++i)
        expectLight(at(image, 0.1 + 0.02 * i, 0.17 + 0.017 * i), 0.5, 0.5, 0.5, 4);
}

TEST_F(StudioTexturePicture, RoughnessIsInGreenAndMetalnessInBlue)
{
    osg::PhysicalSurface surface = dull();
    surface.metalness = 1;
    surface.textures[Slot::MetallicRoughness] = textureOf(QColor(255, 0, 255));
    expectLight(middle(picture(surface, directedLight())), 0.5, 0, 0.5);
    surface.textures[Slot::MetallicRoughness] = textureOf(QColor(255, 0, 0));
    expectLight(middle(picture(surface, directedLight())), 0.5, 1 / 6.0, 0.5);
    surface.textures[Slot::MetallicRoughness] = textureOf(QColor(0, 255, 255));
    EXPECT_GT(qGreen(middle(picture(surface, directedLight()))), 60) << "rough metal";
}

TEST_F(StudioTexturePicture, OcclusionIsInRedAndAsStrongAsItSays)
{
    osg::PhysicalSurface surface = dull();
    surface.textures[Slot::Occlusion] = textureOf(QColor(51, 255, 255));
    expectLight(middle(picture(surface)), 0.2, 0.2, 0.2);
    surface.textures[Slot::Occlusion].strength = 0.5f;
    expectLight(middle(picture(surface)), 0.6, 0.6, 0.6);
}

TEST_F(StudioTexturePicture, EmissionIsMultipliedAndNotOccluded)
{
    osg::PhysicalSurface surface = dull();
    surface.textures[Slot::Emission] = textureOf(QColor(255, 128, 0));
    surface.textures[Slot::Occlusion] = textureOf(QColor(0, 0, 0));
    const Root root = nodeOf(pictureWall(), surfaceMaterial(surface, {0, 0, 0}, {1, 1, 1}));
    expectColor(middle(draw(root, studioOptions(evenLight()))), 255, 128, 0, 2);
}

TEST_F(StudioTexturePicture, SpecularIsInAlphaAndItsColorInRedGreenAndBlue)
{
    osg::PhysicalSurface surface;
    surface.roughness = 0;
    surface.refraction = 3; // a quarter is reflected
    surface.textures[Slot::Specular] = textureOf(QColor(0, 0, 0, 102));
    surface.textures[Slot::SpecularColor] = textureOf(QColor(255, 0, 255));
    const Root root = nodeOf(pictureWall(), surfaceMaterial(surface, {0, 0, 0}));
    expectLight(middle(draw(root, studioOptions(evenLight()))), 0.1, 0, 0.1);
}

TEST_F(StudioTexturePicture, ACoatIsInRedAndItsRoughnessInGreen)
{
    osg::PhysicalSurface surface = dull();
    surface.clearcoat = 1;
    surface.clearcoatRoughness = 1;
    surface.textures[Slot::Clearcoat] = textureOf(QColor(128, 0, 0));
    surface.textures[Slot::ClearcoatRoughness] = textureOf(QColor(255, 0, 255));
    const Root root = nodeOf(pictureWall(), surfaceMaterial(surface, {0, 0, 0}));
    const double half = 0.04 * 128 / 255;
    expectLight(middle(draw(root, studioOptions(directedLight()))), half / 2, 0, half / 2);
}

TEST_F(StudioTexturePicture, NormalsTiltTowardsWhatThePictureHasRightAndAbove)
{
    const double away = 0.5 - tilt;
    expectLight(middle(tiltedPicture(tilted(0, 0))), 0.5, 1 / 6.0, 0.5);
    expectLight(middle(tiltedPicture(tilted(1, 0))), 0.5 + tilt, away, 0.5);
    expectLight(middle(tiltedPicture(tilted(-1, 0))), 0.5 - tilt, away, 0.5);
    expectLight(middle(tiltedPicture(tilted(0, 1))), 0.5, away, 0.5 + tilt);
}

TEST_F(StudioTexturePicture, NormalsFollowMirroredAndTurnedPictures)
{
    osg::Texture mirrored = tilted(1, 0);
    mirrored.scale = {-1, 1};
    EXPECT_LT(qRed(middle(tiltedPicture(mirrored))), display(0.5 - tilt) + 5);
    osg::Texture mirroredUp = tilted(0, 1);
    mirroredUp.scale = {-1, 1};
    EXPECT_GT(qBlue(middle(tiltedPicture(mirroredUp))), display(0.5 + tilt) - 5);
    osg::Texture turned = tilted(1, 0); // the right of the picture is below then
    turned.rotation = float(quarterTurn);
    const QRgb pixel = middle(tiltedPicture(turned));
    EXPECT_NEAR(qRed(pixel), display(0.5), 3);
    EXPECT_LT(qBlue(pixel), display(0.5 - tilt) + 5);
}

TEST_F(StudioTexturePicture, NormalsAreAsStrongAsTheySay)
{
    osg::Texture half = tilted(1, 0);
    half.strength = 0.5f;
    const double sine = 0.5 / std::sqrt(1.25);
    expectLight(middle(tiltedPicture(half)), 0.5 + sine / 3, 0.5 - 2 * sine / 3, 0.5);
}

TEST_F(StudioTexturePicture, TheBackHasNormalsReversed)
{
    expectLight(middle(tiltedPicture(tilted(1, 0), View::Back)), 0.5 - tilt, 0.5 + tilt, 0.5);
    expectLight(middle(tiltedPicture(tilted(0, 1), View::Back)), 0.5, 0.5 + tilt, 0.5 - tilt);
}

TEST_F(StudioTexturePicture, NormalsStandOnASmoothSurface)
{
    osg::PhysicalSurface surface = dull();
    surface.textures[Slot::Normal] = tilted(1, 0);
    const auto mesh = pictureWall();
    mesh->normals = std::vector<osg::Vec3f>(4, {0, -0.8f, 0.6f});
    const Root root = nodeOf(mesh, surfaceMaterial(surface));
    const double s = std::sqrt(0.5) / 3;
    expectLight(middle(draw(root, studioOptions(directedLight()))), 0.5 + s, 0.5 - 0.8 * s, 0.5 + 0.6 * s);
}

TEST_F(StudioTexturePicture, APictureThatIsMirroredByItsPlaceKeepsItsRelief)
{
    osg::PhysicalSurface surface = dull();
    surface.textures[Slot::Normal] = tilted(1, 0);
    surface.doubleSided = false;
    osg::Matrix mirror = osg::scaleMatrix({-1, 1, 1});
    const Root root = placed(mirror, nodeOf(pictureWall(), surfaceMaterial(surface)));
    expectLight(middle(draw(root, studioOptions(directedLight()))), 0.5 - tilt, 0.5 - tilt, 0.5);
}

TEST_F(StudioTexturePicture, ThePlainLookHasNoTextures)
{
    osg::PhysicalSurface surface = dull();
    surface.textures[Slot::BaseColor] = textureOf(QColor(255, 0, 0));
    const Root with = nodeOf(pictureWall(), surfaceMaterial(surface));
    const Root without = nodeOf(pictureWall(), material({1, 1, 1}));
    EXPECT_EQ(draw(with, plainOptions()), draw(without, plainOptions()));
}

} // namespace render
