#include "tests/render/StudioTest.h"

namespace render
{

namespace
{

class StudioLightPicture : public StudioTest
{
};

} // namespace

TEST_F(StudioLightPicture, WhiteMetalInEvenLightCannotBeSeen)
{
    for (const float roughness : {0.0f, 0.3f, 0.6f, 1.0f}) {
        osg::PhysicalSurface surface;
        surface.metalness = 1;
        surface.roughness = roughness;
        const Root root = nodeOf(ball(10), surfaceMaterial(surface));
        SnapshotOptions options = studioOptions(evenLight());
        options.backdrop = {{1, 1, 1}, {1, 1, 1}, false};
        const QImage image = draw(root, options);
        EXPECT_EQ(count(image, [](QRgb pixel) { return qGray(pixel) < 253; }), 0) << roughness;
    }
}

TEST_F(StudioLightPicture, WhiteDullAndCoatedThingsInEvenLightCannotBeSeenEither)
{
    for (const float roughness : {0.0f, 0.5f, 1.0f})
        for (const float coat : {0.0f, 1.0f}) {
            osg::PhysicalSurface surface;
            surface.roughness = roughness;
            surface.clearcoat = coat;
            const Root root = nodeOf(ball(10), surfaceMaterial(surface));
            SnapshotOptions options = studioOptions(evenLight());
            options.backdrop = {{1, 1, 1}, {1, 1, 1}, false};
            EXPECT_EQ(count(draw(root, options), [](QRgb pixel) { return qGray(pixel) < 253; }), 0) << roughness;
        }
}

TEST_F(StudioLightPicture, BlackGlossReflectsFourPartsOfAHundredAndMoreAtASlant)
{
    osg::PhysicalSurface surface;
    surface.roughness = 0;
    const Root root = nodeOf(ball(10, 128), surfaceMaterial(surface, {0, 0, 0}));
    const QImage image = draw(root, studioOptions(evenLight()));
    expectLight(image.pixel(100, 50), 0.04, 0.04, 0.04);
    // 34.6 of 40 pixels off the middle the normal is 60 degrees off the eye: 0.04 + 0.96 / 32.
    const double sine = 34.5 / 40, cosine = std::sqrt(1 - sine * sine);
    const double slanted = 0.04 + 0.96 * std::pow(1 - cosine, 5);
    expectLight(image.pixel(134, 50), slanted, slanted, slanted, 5);
    EXPECT_GT(qGray(image.pixel(138, 50)), 110);
}

TEST_F(StudioLightPicture, MetalHasTheBaseColorInWhatItReflects)
{
    osg::PhysicalSurface surface;
    surface.metalness = 1;
    surface.roughness = 0;
    const Root root = nodeOf(pictureWall(), surfaceMaterial(surface, {0.9f, 0.5f, 0}));
    expectColor(middle(draw(root, studioOptions(evenLight()))), 230, 128, 0, 3);
}

TEST_F(StudioLightPicture, AMirrorShowsWhatIsBehindTheEye)
{
    // The wall faces the front, -Y, whose light is (1, 0, 1) / 2 ... and a dull one gathers (1/2, 1/6, 1/2).
    osg::PhysicalSurface surface = dull();
    expectLight(middle(picture(surface, directedLight())), 0.5, 1 / 6.0, 0.5);
    surface.metalness = 1;
    surface.roughness = 0;
    expectLight(middle(picture(surface, directedLight())), 0.5, 0, 0.5);
    expectLight(middle(picture(surface, directedLight(), View::Back)), 0.5, 1, 0.5);
}

TEST_F(StudioLightPicture, RoughMetalIsBetweenAMirrorAndDull)
{
    osg::PhysicalSurface surface;
    surface.metalness = 1;
    int last = -6;
    for (const float roughness : {0.0f, 0.5f, 1.0f}) {
        surface.roughness = roughness;
        const int green = qGreen(middle(picture(surface, directedLight())));
        EXPECT_GT(green, last + 5) << roughness;
        last = green;
    }
    EXPECT_LT(last, display(1 / 6.0) + 8);
}

TEST_F(StudioLightPicture, NormalsOfABallTurnWithIt)
{
    const Root root = nodeOf(ball(10), surfaceMaterial(dull()));
    const QImage image = draw(root, studioOptions(directedLight()));
    const double tilt = 24 / 40.0, rest = std::sqrt(1 - tilt * tilt);
    expectLight(image.pixel(124, 50), 0.5 + tilt / 3, 0.5 - rest / 3, 0.5, 4);
    expectLight(image.pixel(76, 50), 0.5 - tilt / 3, 0.5 - rest / 3, 0.5, 4);
    expectLight(image.pixel(100, 26), 0.5, 0.5 - rest / 3, 0.5 + tilt / 3, 4);
}

TEST_F(StudioLightPicture, UnlitThingsAreTheirBaseColorInAnyLight)
{
    osg::PhysicalSurface surface;
    surface.unlit = true;
    surface.metalness = 1;
    const Root root = nodeOf(pictureWall(), surfaceMaterial(surface, {0.8f, 0.4f, 0.2f}, {1, 1, 1}));
    expectColor(middle(draw(root, studioOptions(directedLight()))), 204, 102, 51, 1);
}

TEST_F(StudioLightPicture, EmissionIsAddedWithItsStrength)
{
    osg::PhysicalSurface surface = dull();
    surface.emissionStrength = 3;
    const osg::Color3f emission = osg::displayFromLinear(osg::Color3f{0.2f, 0.1f, 0});
    const Root root = nodeOf(pictureWall(), surfaceMaterial(surface, {0, 0, 0}, emission));
    expectLight(middle(draw(root, studioOptions(evenLight()))), 0.6, 0.3, 0);
}

TEST_F(StudioLightPicture, TheIndexOfRefractionAndTheSpecularColorSayWhatIsReflected)
{
    osg::PhysicalSurface surface;
    surface.roughness = 0;
    surface.refraction = 3;
    surface.specularColor = {1, 0.4f, 0};
    const Root root = nodeOf(pictureWall(), surfaceMaterial(surface, {0, 0, 0}));
    expectLight(middle(draw(root, studioOptions(evenLight()))), 0.25, 0.1, 0);
}

TEST_F(StudioLightPicture, AClearCoatReflectsAboveWhatIsBelow)
{
    osg::PhysicalSurface surface = dull();
    surface.clearcoat = 1;
    // Below the mirror of the coat, which shows (1/2, 0, 1/2), is a dull (1/2, 1/6, 1/2).
    expectLight(middle(picture(surface, directedLight())), 0.5, 0.96 / 6, 0.5);
    const Root root = nodeOf(pictureWall(), surfaceMaterial(surface, {0, 0, 0}));
    expectLight(middle(draw(root, studioOptions(evenLight()))), 0.04, 0.04, 0.04);
}

TEST_F(StudioLightPicture, VertexColorsAreMultiplied)
{
    const auto mesh = pictureWall();
    mesh->colors = std::vector<osg::Color4f>(4, {0.5f, 1, 0, 1});
    const Root root = nodeOf(mesh, surfaceMaterial(dull(), {1, 0.5f, 1}));
    expectColor(middle(draw(root, studioOptions(evenLight()))), 128, 128, 0, 2);
    const Root bare = nodeOf(mesh, {});
    EXPECT_GT(qGreen(middle(draw(bare, studioOptions(evenLight())))), 245) << "without a material they stand alone";
}

TEST_F(StudioLightPicture, TheStudioOfItsOwnHasNoColorAndIsNeitherDarkNorBurntOut)
{
    SnapshotOptions options = plainOptions();
    options.look = SnapshotLook::Studio;
    const Root root = nodeOf(ball(10), surfaceMaterial(dull(), {0.8f, 0.8f, 0.8f}));
    const QImage image = draw(root, options);
    const QRgb pixel = image.pixel(100, 50);
    EXPECT_EQ(qRed(pixel), qGreen(pixel));
    EXPECT_EQ(qRed(pixel), qBlue(pixel));
    EXPECT_GT(qRed(pixel), 150);
    EXPECT_LT(qRed(pixel), 240);
    EXPECT_GT(qRed(image.pixel(85, 30)), qRed(image.pixel(115, 75)) + 20) << "light comes from above on the left";
}

TEST_F(StudioLightPicture, ThreadsDrawTheSame)
{
    osg::PhysicalSurface surface;
    surface.roughness = 0.3f;
    surface.metalness = 0.5f;
    surface.textures[Slot::BaseColor] = textureOf(quarters());
    const Root root =
        group({nodeOf(ball(10), surfaceMaterial(surface)), nodeOf(pictureWall(12), surfaceMaterial(surface))});
    SnapshotOptions options = studioOptions(directedLight(), View::Iso);
    options.ambientSamples = 9;
    options.threads = 1;
    const QImage one = draw(root, options);
    options.threads = 4;
    EXPECT_EQ(one, draw(root, options));
}

TEST_F(StudioLightPicture, HasNoLines)
{
    const Root root = nodeOf(box({0, 0, 0}, {10, 10, 10}), surfaceMaterial(dull()));
    SnapshotOptions options = studioOptions(evenLight(), View::Iso);
    options.featureLines = true;
    options.backdrop = {{1, 1, 1}, {1, 1, 1}, false};
    EXPECT_EQ(count(draw(root, options), [](QRgb pixel) { return qGray(pixel) < 250; }), 0);
}

} // namespace render
