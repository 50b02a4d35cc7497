#include "tests/render/StudioTest.h"

namespace render
{

namespace
{

class StudioAlphaPicture : public StudioTest
{
protected:
    /// The left half is half clear, the right half whole.
    static QImage halfClear(int alpha)
    {
        QImage image(2, 1, QImage::Format_ARGB32);
        image.setPixelColor(0, 0, QColor(255, 255, 255, alpha));
        image.setPixelColor(1, 0, QColor(255, 255, 255));
        return image;
    }

    static osg::PhysicalSurface clearSurface(osg::AlphaMode mode, int alpha = 102)
    {
        osg::PhysicalSurface surface = dull();
        surface.alphaMode = mode;
        surface.textures[Slot::BaseColor] = textureOf(halfClear(alpha));
        return surface;
    }
};

} // namespace

TEST_F(StudioAlphaPicture, OpaqueThingsAreWhole)
{
    const QImage image = picture(clearSurface(osg::AlphaMode::Opaque));
    EXPECT_FALSE(isBackdrop(at(image, 0.25, 0.5)));
    EXPECT_EQ(at(image, 0.25, 0.5), at(image, 0.75, 0.5));
}

TEST_F(StudioAlphaPicture, AMaskCutsOutWhatIsBelowItsCutoff)
{
    osg::PhysicalSurface surface = clearSurface(osg::AlphaMode::Mask);
    EXPECT_TRUE(isBackdrop(at(picture(surface), 0.25, 0.5)));
    EXPECT_FALSE(isBackdrop(at(picture(surface), 0.75, 0.5)));
    surface.alphaCutoff = 0.4f;
    EXPECT_FALSE(isBackdrop(at(picture(surface), 0.25, 0.5)));
    surface.opacity = 0.9f; // times 0.4
    EXPECT_TRUE(isBackdrop(at(picture(surface), 0.25, 0.5)));
}

TEST_F(StudioAlphaPicture, BlendingShowsAsMuchAsAlphaSays)
{
    const QImage image = picture(clearSurface(osg::AlphaMode::Blend));
    expectLight(at(image, 0.25, 0.5), 0.4, 0.4, 1);
    expectLight(at(image, 0.75, 0.5), 1, 1, 1);
    osg::PhysicalSurface surface = clearSurface(osg::AlphaMode::Blend);
    surface.opacity = 0.5f;
    expectLight(at(picture(surface), 0.25, 0.5), 0.2, 0.2, 1);
    surface.unlit = true;
    expectLight(at(picture(surface), 0.75, 0.5), 0.5, 0.5, 1);
}

TEST_F(StudioAlphaPicture, VertexColorsBlendToo)
{
    osg::PhysicalSurface surface = dull();
    surface.alphaMode = osg::AlphaMode::Blend;
    surface.opacity = 0.8f;
    const auto mesh = pictureWall();
    mesh->colors = std::vector<osg::Color4f>(4, {1, 1, 1, 0.5f});
    const Root root = nodeOf(mesh, surfaceMaterial(surface));
    expectLight(middle(draw(root, studioOptions(evenLight()))), 0.4, 0.4, 1);
}

TEST_F(StudioAlphaPicture, WhatIsBehindAMaskIsSeen)
{
    const osg::MaterialPtr red = surfaceMaterial(dull(), {1, 0, 0});
    const Root root = group(
        {nodeOf(pictureWall(0), surfaceMaterial(clearSurface(osg::AlphaMode::Mask))), nodeOf(pictureWall(5), red)});
    expectColor(at(draw(root, studioOptions(evenLight())), 0.25, 0.5), 255, 0, 0, 2);
}

TEST_F(StudioAlphaPicture, OneSidedThingsAreSeenFromTheirFrontAlone)
{
    osg::PhysicalSurface surface = dull();
    surface.doubleSided = false;
    EXPECT_FALSE(isBackdrop(middle(picture(surface, evenLight(), View::Front))));
    EXPECT_TRUE(isBackdrop(middle(picture(surface, evenLight(), View::Back))));
    surface.doubleSided = true;
    EXPECT_FALSE(isBackdrop(middle(picture(surface, evenLight(), View::Back))));
}

TEST_F(StudioAlphaPicture, MirroringDoesNotTurnFrontsIntoBacks)
{
    osg::PhysicalSurface surface = dull();
    surface.doubleSided = false;
    const Root root = placed(osg::scaleMatrix({-1, 1, 1}), nodeOf(pictureWall(), surfaceMaterial(surface)));
    EXPECT_FALSE(isBackdrop(middle(draw(root, studioOptions(evenLight(), View::Front)))));
    EXPECT_TRUE(isBackdrop(middle(draw(root, studioOptions(evenLight(), View::Back)))));
}

TEST_F(StudioAlphaPicture, WhatIsTransmittedIsTintedByTheBaseColor)
{
    osg::PhysicalSurface glass;
    glass.transmission = 1;
    glass.roughness = 0;
    const osg::MaterialPtr white = surfaceMaterial(dull());
    const osg::Color3f tint = osg::displayFromLinear(osg::Color3f{1, 0.5f, 0.25f});
    const Root root = group({nodeOf(pictureWall(0), surfaceMaterial(glass, tint)), nodeOf(pictureWall(5), white)});
    // 0.96 goes in and is tinted, 0.04 of the even light is reflected.
    expectLight(middle(draw(root, studioOptions(evenLight()))), 1, 0.04 + 0.96 * 0.5, 0.04 + 0.96 * 0.25);
    glass.textures[Slot::Transmission] = textureOf(QColor(0, 255, 255));
    const Root blocked = group({nodeOf(pictureWall(0), surfaceMaterial(glass, tint)),
                                nodeOf(pictureWall(5), surfaceMaterial(dull(), {0, 0, 0}))});
    expectLight(middle(draw(blocked, studioOptions(evenLight()))), 1, 0.52, 0.28);
}

TEST_F(StudioAlphaPicture, TwoTintsAreMultiplied)
{
    osg::PhysicalSurface glass;
    glass.transmission = 1;
    glass.specular = 0;
    const osg::Color3f half = osg::displayFromLinear(osg::Color3f{1, 0.5f, 1});
    const Root root =
        group({nodeOf(pictureWall(0), surfaceMaterial(glass, half)),
               nodeOf(pictureWall(3), surfaceMaterial(glass, half)), nodeOf(pictureWall(6), surfaceMaterial(dull()))});
    expectLight(middle(draw(root, studioOptions(evenLight()))), 1, 0.25, 1);
}

} // namespace render
