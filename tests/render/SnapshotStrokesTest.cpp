#include "scene/Tags.h"
#include "tests/render/RenderTest.h"

namespace render
{

namespace
{

class StrokesInPicture : public RenderTest
{
protected:
    static SnapshotOptions onWhite(View view = View::Front)
    {
        SnapshotOptions options = plainOptions(view);
        options.backdrop = {{1, 1, 1}, {1, 1, 1}, false};
        return options;
    }

    static std::shared_ptr<osg::Mesh> frame()
    {
        auto mesh = std::make_shared<osg::Mesh>();
        mesh->positions = std::vector<osg::Vec3f>{{-20, 3, -10}, {20, 3, -10}, {20, 3, 10}, {-20, 3, 10}};
        mesh->lines = std::vector<std::uint32_t>{0, 1, 1, 2, 2, 3, 3, 0};
        return mesh;
    }

    static bool isDrawn(QRgb pixel) { return pixel != qRgb(255, 255, 255); }
};

} // namespace

TEST_F(StrokesInPicture, LinesAreThinAndWhereTheyBelong)
{
    const Root root = nodeOf(frame(), material({0.3f, 0, 0}));
    const QImage image = draw(root, onWhite());
    // 40 x 20 mm in 160 x 80 pixels, and half of a line around.
    EXPECT_EQ(extent(image, isDrawn), QRect(19, 9, 162, 82));
    const int drawn = count(image, isDrawn);
    EXPECT_GT(drawn, 480);
    EXPECT_LT(drawn, 1000);
    EXPECT_FALSE(isDrawn(image.pixel(100, 50)));
}

TEST_F(StrokesInPicture, LinesKeepTheirWidthUnderAScale)
{
    const Root plain = nodeOf(frame(), material({0.3f, 0, 0}));
    const Root scaled = placed(osg::scaleMatrix({25, 25, 25}), nodeOf(frame(), material({0.3f, 0, 0})));
    EXPECT_NEAR(count(draw(scaled, onWhite()), isDrawn), count(draw(plain, onWhite()), isDrawn), 20);
}

TEST_F(StrokesInPicture, StrokesHaveTheColorOfTheirMaterialOrVertex)
{
    SnapshotOptions options = onWhite();
    options.samples = 1;
    const Root plain = nodeOf(frame(), material({0.3f, 0, 0.1f}));
    const auto isOther = [](QRgb pixel) { return isDrawn(pixel) && pixel != qRgb(77, 0, 26); };
    EXPECT_EQ(count(draw(plain, options), isOther), 0);
    const auto mesh = frame();
    mesh->colors = std::vector<osg::Color4f>(4, {0.3f, 0, 0.1f, 1});
    const Root colored = nodeOf(mesh, material({0, 0.4f, 0}));
    EXPECT_EQ(count(draw(colored, options), isOther), 0);
    EXPECT_GT(count(draw(colored, options), isDrawn), 200);
}

TEST_F(StrokesInPicture, PaleLinesAreDarkenedOnAPaleBackdrop)
{
    SnapshotOptions options = onWhite();
    options.samples = 1;
    const Root root = nodeOf(frame(), material({0.9f, 0.9f, 0.9f}));
    EXPECT_EQ(count(draw(root, options), [](QRgb pixel) { return isDrawn(pixel) && qRed(pixel) > 120; }), 0);
    EXPECT_GT(count(draw(root, options), isDrawn), 200);
}

TEST_F(StrokesInPicture, DarkLinesAreLightenedOnADarkBackdrop)
{
    SnapshotOptions options = plainOptions();
    options.samples = 1;
    options.backdrop = {{0.1f, 0.1f, 0.1f}, {0.1f, 0.1f, 0.1f}, false};
    const Root root = nodeOf(frame(), material({0, 0, 0}));
    EXPECT_GT(count(draw(root, options), [](QRgb pixel) { return qRed(pixel) > 120; }), 200);
}

TEST_F(StrokesInPicture, PointsAreSmallDots)
{
    auto mesh = std::make_shared<osg::Mesh>();
    mesh->positions = std::vector<osg::Vec3f>{{-20, 3, -10}, {20, 3, -10}, {20, 3, 10}};
    mesh->points = std::vector<std::uint32_t>{0, 1, 2};
    const Root root = nodeOf(mesh, material({0.3f, 0, 0}));
    const QImage image = draw(root, onWhite());
    for (const QPoint corner : {QPoint(20, 90), QPoint(180, 90), QPoint(180, 10)}) {
        EXPECT_EQ(extent(image.copy(QRect(corner - QPoint(10, 10), QSize(20, 20))), isDrawn), QRect(8, 8, 4, 4));
    }
    EXPECT_FALSE(isDrawn(image.pixel(20, 10)));
}

TEST_F(StrokesInPicture, LinesOnASurfaceAreSeen)
{
    const auto mesh = wall(3, 20);
    mesh->lines = std::vector<std::uint32_t>{0, 2};
    const Root root = nodeOf(mesh, material({0, 0.9f, 0}));
    SnapshotOptions options = onWhite();
    options.samples = 1;
    const QRgb surface = draw(root, options).pixel(80, 20);
    const QImage image = draw(root, options);
    EXPECT_GT(count(image, [surface](QRgb pixel) { return isDrawn(pixel) && pixel != surface; }), 70);
}

TEST_F(StrokesInPicture, WhatIsBehindAPartIsSeenWhereItsTagBringsItToTheFront)
{
    // A line behind a wall and an area within it, and another line.
    const auto drawn = std::make_shared<osg::Mesh>();
    drawn->positions = std::vector<osg::Vec3f>{{-15, 8, -8}, {15, 8, -8}, {-10, 2, 0}, {-4, 2, 0}, {-10, 2, 6}};
    drawn->lines = std::vector<std::uint32_t>{0, 1};
    drawn->triangles = std::vector<std::uint32_t>{2, 3, 4};
    const osg::NodePtr beside = group({nodeOf(drawn, material({0.7f, 0, 0}))});
    osg::setTags(beside, {"other", "drawn beside"});
    const auto other = std::make_shared<osg::Mesh>();
    other->positions = std::vector<osg::Vec3f>{{-15, 8, 8}, {15, 8, 8}};
    other->lines = std::vector<std::uint32_t>{0, 1};
    const Root root = group({nodeOf(box({-20, 0, -10}, {20, 5, 10}), material({0, 0.9f, 0})), beside,
                             nodeOf(other, material({0, 0, 0.7f}))});
    SnapshotOptions options = onWhite();
    options.samples = 1;
    options.ambientSamples = 8;
    const auto isRed = [](QRgb pixel) { return qRed(pixel) > 100 && qGreen(pixel) < 50; };
    const auto isBlue = [](QRgb pixel) { return qBlue(pixel) > 100 && qGreen(pixel) < 50; };
    EXPECT_EQ(count(draw(root, options), isRed), 0);
    options.inFront = "drawn beside";
    const QImage front = draw(root, options);
    EXPECT_EQ(count(front, isBlue), 0);
    // The wall is 40 x 20 mm in 160 x 80 pixels: the line is 120 long and the area 24 x 24 / 2. No shade is on them.
    EXPECT_NEAR(count(front, [](QRgb pixel) { return pixel == qRgb(179, 0, 0); }), 2 * 120 + 288, 60);
}

} // namespace render
