#include "host/OSGSystem/MaterialGroup.h"
#include "tests/render/RenderTest.h"

#include <array>
#include <cmath>

namespace render
{

namespace
{

class Shading : public RenderTest
{
protected:
    static QRgb middle(const QImage& image) { return image.pixel(image.width() / 2, image.height() / 2); }

    static std::shared_ptr<osg::Mesh> coloredWall(const osg::Color4f& color)
    {
        const auto mesh = wall(0, 10);
        mesh->colors = std::vector<osg::Color4f>(4, color);
        return mesh;
    }

    static int brightness(QRgb pixel) { return qGray(pixel); }
};

} // namespace

TEST_F(Shading, ASurfaceThatFacesTheEyeIsNearItsDiffuseColor)
{
    // Light of the lamps on it: 0.6 * 0.743 + 0.13 * 0.527 + 0.29 = 0.804, and 0.008 of gloss.
    const Root root = nodeOf(box({0, 0, 0}, {10, 10, 10}), material({0.8f, 0.1f, 0.4f}));
    expectColor(middle(draw(root, plainOptions())), 187, 34, 93, 2);
}

TEST_F(Shading, EachViewShowsTheFaceOnItsSide)
{
    const auto mesh = box({-5, -5, -5}, {5, 5, 5});
    const std::array<osg::Color4f, 6> faces = {
        {{1, 0, 0, 1}, {0, 1, 0, 1}, {0, 0, 1, 1}, {1, 1, 0, 1}, {1, 0, 1, 1}, {0, 1, 1, 1}}};
    std::vector<osg::Color4f> colors;
    for (const osg::Color4f& face : faces)
        colors.insert(colors.end(), 4, face);
    mesh->colors = colors;
    const Root root = nodeOf(mesh, material({0.5f, 0.5f, 0.5f}));
    const std::array<View, 6> views = {View::Left, View::Right, View::Front, View::Back, View::Bottom, View::Top};
    for (std::size_t i = 0; i < views.size(); ++i) {
        const QRgb pixel = middle(draw(root, plainOptions(views[i])));
        EXPECT_EQ(qRed(pixel) > 150, faces[i].red > 0) << viewName(views[i]).toStdString();
        EXPECT_EQ(qGreen(pixel) > 150, faces[i].green > 0) << viewName(views[i]).toStdString();
        EXPECT_EQ(qBlue(pixel) > 150, faces[i].blue > 0) << viewName(views[i]).toStdString();
    }
}

TEST_F(Shading, VertexColorsReplaceTheDiffuseColor)
{
    const Root root = nodeOf(coloredWall({0.8f, 0.1f, 0.4f, 1}), material({0.1f, 0.9f, 0.9f}));
    expectColor(middle(draw(root, plainOptions())), 187, 34, 93, 2);
}

TEST_F(Shading, AWallIsLitFromBothSides)
{
    const Root root = nodeOf(wall(0, 10), material({0.8f, 0.1f, 0.4f}));
    expectColor(middle(draw(root, plainOptions(View::Front))), 187, 34, 93, 2);
    expectColor(middle(draw(root, plainOptions(View::Back))), 187, 34, 93, 2);
}

TEST_F(Shading, GivenNormalsAreUsedOnEitherSide)
{
    const auto up = wall(0, 10), down = wall(0, 10);
    up->normals = std::vector<osg::Vec3f>(4, {0, -0.6f, 0.8f});
    down->normals = std::vector<osg::Vec3f>(4, {0, 0.6f, -0.8f});
    const Root upRoot = nodeOf(up, material({0.6f, 0.6f, 0.6f}));
    const Root turnedRoot = nodeOf(down, material({0.6f, 0.6f, 0.6f}));
    const Root flatRoot = nodeOf(wall(0, 10), material({0.6f, 0.6f, 0.6f}));
    const QRgb lit = middle(draw(upRoot, plainOptions()));
    EXPECT_GT(brightness(lit), brightness(middle(draw(flatRoot, plainOptions()))) + 5);
    EXPECT_EQ(middle(draw(turnedRoot, plainOptions())), lit);
}

TEST_F(Shading, NormalsFollowANonUniformScale)
{
    const auto mesh = wall(0, 10);
    mesh->normals = std::vector<osg::Vec3f>(4, {0, -0.6f, 0.8f});
    // The normal of the slope that this scale makes of it: (0, -0.6 / 1, 0.8 / 4), of length 1.
    const auto expected = wall(0, 40);
    expected->normals = std::vector<osg::Vec3f>(4, {0, -0.948683f, 0.316228f});
    const Root root = placed(osg::scaleMatrix({4, 1, 4}), nodeOf(mesh, material({0.6f, 0.6f, 0.6f})));
    const Root wanted = nodeOf(expected, material({0.6f, 0.6f, 0.6f}));
    EXPECT_EQ(middle(draw(root, plainOptions())), middle(draw(wanted, plainOptions())));
}

TEST_F(Shading, NormalsThatAreNoDirectionGiveWayToTheFace)
{
    const auto mesh = wall(0, 10);
    mesh->normals = std::vector<osg::Vec3f>{{0, 0, 0}, {NAN, 0, 0}, {0, 0, 0}, {0, INFINITY, 0}};
    const Root root = nodeOf(mesh, material({0.8f, 0.1f, 0.4f}));
    expectColor(middle(draw(root, plainOptions())), 187, 34, 93, 2);
}

TEST_F(Shading, EmissionAddsItsLight)
{
    const osg::SimpleMaterialPtr look = material({0, 0, 0});
    look->setEmission({0.5f, 0.25f, 0});
    const Root root = nodeOf(wall(0, 10), look);
    // 0.214 and 0.051 of light, and 0.008 of gloss.
    expectColor(middle(draw(root, plainOptions())), 130, 68, 24, 3);
}

TEST_F(Shading, ClearThingsLetTheirBackgroundThrough)
{
    // Light 0.804 of the wall's red, half of it, and half of the backdrop's blue.
    const Root root = nodeOf(wall(0, 10), material({1, 0, 0}, 0.5f));
    expectColor(middle(draw(root, plainOptions())), 170, 13, 189, 3);
}

TEST_F(Shading, ClearVertexColorsCountAsCoverage)
{
    const Root root = nodeOf(coloredWall({1, 0, 0, 0.5f}), material({0, 1, 0}));
    expectColor(middle(draw(root, plainOptions())), 170, 13, 189, 3);
}

TEST_F(Shading, ClearThingsAreBlendedInTheirOrder)
{
    const Root root = group({nodeOf(wall(5, 10), material({0, 1, 0}, 0.5f)), //
                             nodeOf(wall(0, 10), material({1, 0, 0}, 0.5f))});
    // Half red, a quarter green, a quarter of the backdrop.
    expectColor(middle(draw(root, plainOptions(View::Front))), 170, 124, 138, 3);
    expectColor(middle(draw(root, plainOptions(View::Back))), 124, 170, 138, 3);
}

TEST_F(Shading, WhatIsQuiteClearIsNotSeen)
{
    const Root root = nodeOf(wall(0, 10), material({1, 0, 0}, 1));
    EXPECT_TRUE(drawnExtent(draw(root, plainOptions())).isEmpty());
}

TEST_F(Shading, TheTopmostMaterialGroupRulesAllBelowIt)
{
    const osg::MaterialGroupPtr inner = osg::MaterialGroup::create(), outer = osg::MaterialGroup::create();
    inner->setMaterial(material({0, 1, 0}));
    outer->setMaterial(material({0.8f, 0.1f, 0.4f}));
    const osg::NodePtr innerNode = osg::makeNodeFor(inner), outerNode = osg::makeNodeFor(outer);
    innerNode->addChild(nodeOf(wall(0, 10), material({0, 0, 1})));
    outerNode->addChild(innerNode);
    const Root root = outerNode;
    expectColor(middle(draw(root, plainOptions())), 187, 34, 93, 2);
}

TEST_F(Shading, AGeometryWithoutMaterialIsGrey)
{
    const Root root = nodeOf(wall(0, 10), osg::MaterialPtr());
    const QRgb pixel = middle(draw(root, plainOptions()));
    EXPECT_TRUE(qRed(pixel) == qGreen(pixel) && qGreen(pixel) == qBlue(pixel));
    EXPECT_NEAR(qRed(pixel), 184, 3);
}

TEST_F(Shading, BordersAreMixedByTheirSamples)
{
    // A square on its tip: all of its borders are slanted.
    const osg::Matrix turn = osg::rotationMatrix({0, 0.382683f, 0, 0.923880f});
    const Root root = placed(turn, nodeOf(wall(0, 10), material({1, 0, 0})));
    SnapshotOptions options = plainOptions();
    const QImage smooth = draw(root, options);
    const QRgb inside = middle(smooth);
    const auto isMixed = [inside](QRgb pixel) { return pixel != inside && !isBackdrop(pixel); };
    EXPECT_GT(count(smooth, isMixed), 100);
    options.samples = 1;
    EXPECT_EQ(count(draw(root, options), isMixed), 0);
}

TEST_F(Shading, CornersAreDarkerThanOpenPlaces)
{
    SnapshotOptions options = plainOptions(View::Top);
    options.ambientSamples = 64;
    const Root root = group({nodeOf(box({-20, -20, -2}, {20, 20, 0}), material({0.7f, 0.7f, 0.7f})),
                             nodeOf(box({-2, -20, 0}, {2, 20, 20}), material({0.7f, 0.7f, 0.7f}))});
    const QImage image = draw(root, options);
    const int open = brightness(image.pixel(63, 50)), corner = brightness(image.pixel(94, 50));
    EXPECT_GT(open, corner + 15);
    EXPECT_GT(corner, 60);
    options.ambientSamples = 0;
    const QImage unshaded = draw(root, options);
    EXPECT_EQ(unshaded.pixel(63, 50), unshaded.pixel(94, 50));
}

TEST_F(Shading, AnOpenSurfaceIsNotDarkened)
{
    SnapshotOptions options = plainOptions();
    options.ambientSamples = 16;
    const Root root = nodeOf(box({0, 0, 0}, {10, 10, 10}), material({0.8f, 0.1f, 0.4f}));
    expectColor(middle(draw(root, options)), 187, 34, 93, 2);
}

TEST_F(Shading, TheModelShadesTheGroundInTheIsoView)
{
    SnapshotOptions options = plainOptions(View::Iso);
    options.backdrop = {{0.9f, 0.9f, 0.9f}, {0.9f, 0.9f, 0.9f}, true};
    options.ambientSamples = 64;
    const Root root = nodeOf(box({0, 0, 0}, {40, 40, 10}), material({0.9f, 0, 0}));
    const auto isShade = [](QRgb pixel) { return qRed(pixel) < 215 && qRed(pixel) - qGreen(pixel) < 3; };
    EXPECT_GT(count(draw(root, options), isShade), 200);
    options.backdrop.contactShadow = false;
    EXPECT_EQ(count(draw(root, options), isShade), 0);
}

TEST_F(Shading, LinesMarkOutlinesAndCreases)
{
    SnapshotOptions options = plainOptions(View::Iso);
    options.backdrop = {{1, 1, 1}, {1, 1, 1}, false};
    const Root root = nodeOf(box({0, 0, 0}, {10, 10, 10}), material({1, 1, 1}));
    const QImage without = draw(root, options);
    options.featureLines = true;
    const QImage with = draw(root, options);
    int darkened = 0, brightened = 0;
    for (int y = 0; y < with.height(); ++y)
        for (int x = 0; x < with.width(); ++x) {
            darkened += brightness(with.pixel(x, y)) < brightness(without.pixel(x, y)) - 25 ? 1 : 0;
            brightened += brightness(with.pixel(x, y)) > brightness(without.pixel(x, y)) ? 1 : 0;
        }
    // Nine edges of the cube are seen, each 30 to 40 pixels long.
    EXPECT_GT(darkened, 250);
    EXPECT_LT(darkened, 800);
    EXPECT_EQ(brightened, 0);
}

TEST_F(Shading, SmoothFacesMeetInAFaintLine)
{
    SnapshotOptions options = plainOptions();
    options.featureLines = true;
    const auto mesh = wall(0, 10);
    mesh->faces = std::vector<osg::FaceRange>{{0, 1}, {1, 1}};
    const Root root = nodeOf(mesh, material({1, 1, 1}));
    const QRgb plain = draw(root, options).pixel(80, 30), onDiagonal = middle(draw(root, options));
    EXPECT_LT(qRed(onDiagonal), qRed(plain) - 5);
    EXPECT_GT(qRed(onDiagonal), qRed(plain) - 60);
}

} // namespace render
