#include "tests/render/RenderTest.h"

namespace render
{

namespace
{

class Placement : public RenderTest
{
protected:
    static osg::NodePtr sharing(const osg::NodePtr& other) { return osg::makeNodeFor(other->getCore()); }
    static bool isRed(QRgb pixel) { return qRed(pixel) > 100 && qGreen(pixel) < 60; }
    static bool isGreen(QRgb pixel) { return qGreen(pixel) > 100 && qRed(pixel) < 60; }
};

} // namespace

TEST_F(Placement, EachUseOfASharedGeometryStandsInItsOwnPlace)
{
    const osg::NodePtr first = nodeOf(box({0, 0, 0}, {10, 10, 10}), material({1, 0, 0}));
    const Root root = group({first, placed(osg::translationMatrix({80, 3, 30}), sharing(first))});
    const QImage image = draw(root, plainOptions());
    // 90 x 40 mm in 180 x 80 pixels.
    EXPECT_EQ(drawnExtent(image.copy(0, 0, 100, 100)), QRect(10, 70, 20, 20));
    EXPECT_EQ(drawnExtent(image.copy(100, 0, 100, 100)), QRect(70, 10, 20, 20));
    EXPECT_EQ(count(image, isRed), 800);
}

TEST_F(Placement, NestedTransformsActFromTheInsideOut)
{
    const osg::NodePtr cube = nodeOf(box({0, 0, 0}, {10, 10, 10}), material({1, 0, 0}));
    const osg::NodePtr moved = placed(osg::translationMatrix({20, 0, 0}), cube);
    const osg::NodePtr scaled = placed(osg::scaleMatrix({2, 1, 1}), moved);
    const Root root = group({nodeOf(box({0, 0, 0}, {10, 10, 30}), material({0, 1, 0})), scaled});
    // Red from x = 40 to 60 mm, z from 0 to 10; green from 0 to 10 and 0 to 30: 60 x 30 mm in 160 x 80 pixels.
    const QImage image = draw(root, plainOptions());
    EXPECT_EQ(extent(image, isGreen), QRect(20, 10, 27, 80));
    const QRect red = extent(image, isRed);
    EXPECT_NEAR(red.left(), 20 + 40 * 80 / 30, 1);
    EXPECT_NEAR(red.right(), 179, 1);
    EXPECT_NEAR(red.top(), 10 + 20 * 80 / 30, 1);
}

TEST_F(Placement, AMirroredUseIsSeenMirroredAndLitTheSame)
{
    auto mesh = std::make_shared<osg::Mesh>();
    mesh->positions = std::vector<osg::Vec3f>{{0, 0, 0}, {40, 0, 0}, {0, 0, 40}};
    mesh->triangles = std::vector<std::uint32_t>{0, 1, 2};
    const osg::NodePtr slope = nodeOf(mesh, material({1, 0, 0}));
    const Root plain = slope;
    const Root mirrored = placed(osg::scaleMatrix({-1, 1, 1}), sharing(slope));
    SnapshotOptions options = plainOptions();
    options.samples = 1;
    const QImage image = draw(plain, options), mirror = draw(mirrored, options);
    EXPECT_EQ(image.pixel(65, 85), mirror.pixel(134, 85));
    EXPECT_TRUE(isRed(image.pixel(65, 15)) && isRed(mirror.pixel(134, 15)));
    EXPECT_TRUE(isBackdrop(image.pixel(134, 15)) && isBackdrop(mirror.pixel(65, 15)));
}

TEST_F(Placement, GeometriesThatShareAMeshKeepTheirMaterials)
{
    const std::shared_ptr<const osg::Mesh> mesh = box({0, 0, 0}, {10, 10, 10});
    const Root root = group({nodeOf(mesh, material({1, 0, 0})),
                             placed(osg::translationMatrix({10, 0, 0}), nodeOf(mesh, material({0, 1, 0})))});
    const QImage image = draw(root, plainOptions());
    EXPECT_EQ(extent(image, isRed), QRect(20, 10, 80, 80));
    EXPECT_EQ(extent(image, isGreen), QRect(100, 10, 80, 80));
}

TEST_F(Placement, OfTwoThingsInOnePlaceOneIsSeenAllOver)
{
    const osg::Matrix turn = osg::rotationMatrix({0.182574f, 0.365148f, 0.547723f, 0.730297f});
    const std::shared_ptr<const osg::Mesh> mesh = box({100, 200, 300}, {137, 231, 329});
    const Root root = placed(turn, group({nodeOf(mesh, material({1, 0, 0})), nodeOf(mesh, material({0, 1, 0}))}));
    for (const View view : {View::Iso, View::Front}) {
        SnapshotOptions options = plainOptions(view);
        options.samples = 1;
        const QImage image = draw(root, options);
        const auto red = [](QRgb pixel) { return qRed(pixel) > qGreen(pixel); };
        const auto green = [](QRgb pixel) { return qGreen(pixel) > qRed(pixel); };
        EXPECT_EQ(std::min(count(image, red), count(image, green)), 0);
        EXPECT_GT(std::max(count(image, red), count(image, green)), 2000);
    }
}

TEST_F(Placement, ThousandsOfUsesOfOneMeshAreDrawn)
{
    const std::shared_ptr<const osg::Mesh> mesh = box({0, 0, 0}, {1, 1, 1});
    const osg::NodePtr first = nodeOf(mesh, material({1, 0, 0}));
    const long holders = mesh.use_count();
    const osg::NodePtr all = group({first});
    for (int i = 1; i < 5000; ++i)
        all->addChild(
            placed(osg::translationMatrix({2.0f * float(i % 100), 0, 2.0f * float(i / 100)}), sharing(first)));
    const Root root = all;
    SnapshotOptions options = plainOptions();
    options.width = 398 + 20;
    options.height = 198 + 20;
    options.margin = 10.0f / 218;
    // Each millimetre is two pixels wide; cubes and gaps alternate.
    EXPECT_EQ(count(draw(root, options), isRed), 5000 * 4);
    EXPECT_EQ(mesh.use_count(), holders);
}

TEST_F(Placement, AFlattenedUseIsDrawnFlat)
{
    const Root root =
        group({placed(osg::scaleMatrix({1, 0, 1}), nodeOf(box({0, 0, 0}, {10, 10, 10}), material({1, 0, 0}))),
               placed(osg::translationMatrix({0, 5, 0}), nodeOf(wall(0, 30), material({0, 1, 0})))});
    const QImage image = draw(root, plainOptions());
    // 60 mm in 80 pixels, the red square from the middle to the right and upwards.
    const QRect red = extent(image, isRed);
    EXPECT_NEAR(red.left(), 100, 1);
    EXPECT_NEAR(red.width(), 13, 1);
    EXPECT_NEAR(red.bottom(), 49, 1);
}

} // namespace render
