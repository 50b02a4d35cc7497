#include "scene/ColorSpace.h"
#include "tests/render/RenderTest.h"

#include <cmath>

namespace render
{

namespace
{

constexpr float pi = 3.14159265f;

class Framing : public RenderTest
{
protected:
    /// Small boxes on the positive axes, one for each in its own colour, and a grey one in the origin.
    QImage drawAxes(View view)
    {
        const Root root = group({nodeOf(box({-1, -1, -1}, {1, 1, 1}), material({0.5f, 0.5f, 0.5f})),
                                 nodeOf(box({9, -1, -1}, {11, 1, 1}), material({0.9f, 0, 0})),
                                 nodeOf(box({-1, 9, -1}, {1, 11, 1}), material({0, 0.9f, 0})),
                                 nodeOf(box({-1, -1, 9}, {1, 1, 11}), material({0.9f, 0.9f, 0}))});
        SnapshotOptions options = plainOptions(view);
        options.samples = 1; // no mixed colours at borders
        return draw(root, options);
    }

    static bool isRed(QRgb pixel) { return qRed(pixel) > 80 && qGreen(pixel) < 60 && qBlue(pixel) < 60; }
    static bool isGreen(QRgb pixel) { return qRed(pixel) < 60 && qGreen(pixel) > 80 && qBlue(pixel) < 60; }
    static bool isYellow(QRgb pixel) { return qRed(pixel) > 80 && qGreen(pixel) > 80 && qBlue(pixel) < 60; }
    static bool isGrey(QRgb pixel) { return qRed(pixel) > 60 && qGreen(pixel) > 60 && qBlue(pixel) > 60; }

    /// Where the middle of one colour is seen from the grey box, in pixels to the right and up.
    static QPoint way(const QImage& image, bool (*isColor)(QRgb))
    {
        const QPoint from = extent(image, isGrey).center(), to = extent(image, isColor).center();
        return {to.x() - from.x(), from.y() - to.y()};
    }
};

} // namespace

TEST_F(Framing, FrontViewOfACubeFillsTheExpectedRectangle)
{
    const Root root = nodeOf(box({4, -30, 52}, {14, -20, 62}), material({0.8f, 0.1f, 0.1f}));
    const QImage image = draw(root, plainOptions());
    EXPECT_EQ(drawnExtent(image), QRect(60, 10, 80, 80));
    EXPECT_EQ(count(image, [](QRgb pixel) { return !isBackdrop(pixel); }), 6400);
}

TEST_F(Framing, AWideModelIsFittedToTheWidth)
{
    const Root root = nodeOf(box({0, 0, 0}, {90, 7, 9}), material({0.8f, 0.1f, 0.1f}));
    EXPECT_EQ(drawnExtent(draw(root, plainOptions(View::Back))), QRect(10, 41, 180, 18));
}

TEST_F(Framing, TheMarginIsKeptFreeInAPerspectiveToo)
{
    const Root root = nodeOf(box({3, 4, 5}, {43, 24, 15}), material({0.8f, 0.1f, 0.1f}));
    const QRect drawn = drawnExtent(draw(root, plainOptions(View::Iso)));
    const bool touchesSides = drawn.left() == 10 && drawn.right() == 189;
    const bool touchesEnds = drawn.top() == 10 && drawn.bottom() == 89;
    EXPECT_TRUE(touchesSides || touchesEnds)
        << drawn.x() << " " << drawn.y() << " " << drawn.right() << " " << drawn.bottom();
    EXPECT_TRUE(QRect(10, 10, 180, 80).contains(drawn));
}

TEST_F(Framing, AFlatDiscCoversItsArea)
{
    auto mesh = std::make_shared<osg::Mesh>();
    std::vector<osg::Vec3f> positions = {{0, 5, 0}};
    std::vector<std::uint32_t> triangles;
    for (std::uint32_t i = 0; i < 720; ++i) {
        const float angle = pi * float(i) / 360;
        positions.push_back({30 * std::cos(angle), 5, 30 * std::sin(angle)});
        triangles.insert(triangles.end(), {0, 1 + i, 1 + (i + 1) % 720});
    }
    mesh->positions = positions;
    mesh->triangles = triangles;
    const Root root = nodeOf(mesh, material({1, 1, 1}));
    const QImage image = draw(root, plainOptions());
    // Only the disc has red in it, as much as its middle in each pixel that it covers.
    double covered = 0;
    for (int y = 0; y < 100; ++y)
        for (int x = 0; x < 200; ++x)
            covered += double(osg::linearFromDisplay(float(qRed(image.pixel(x, y))) / 255)) /
                       double(osg::linearFromDisplay(float(qRed(image.pixel(100, 50))) / 255));
    EXPECT_NEAR(covered, double(pi) * 40 * 40, 25);
}

TEST_F(Framing, FrontLooksAlongYWithXToTheRight)
{
    const QImage image = drawAxes(View::Front);
    EXPECT_GT(way(image, isRed).x(), 50);
    EXPECT_EQ(way(image, isRed).y(), 0);
    EXPECT_EQ(way(image, isYellow).x(), 0);
    EXPECT_GT(way(image, isYellow).y(), 50);
    EXPECT_EQ(count(image, isGreen), 0);
}

TEST_F(Framing, BackLooksAgainstYWithXToTheLeft)
{
    const QImage image = drawAxes(View::Back);
    const QPoint red = extent(image, isRed).center(), green = extent(image, isGreen).center();
    EXPECT_LT(red.x() - green.x(), -50);
    EXPECT_EQ(red.y(), green.y());
    EXPECT_GT(green.y() - extent(image, isYellow).center().y(), 50);
    EXPECT_EQ(count(image, isGrey), 0);
}

TEST_F(Framing, RightLooksAgainstXWithYToTheRight)
{
    const QImage image = drawAxes(View::Right);
    const QPoint red = extent(image, isRed).center();
    EXPECT_GT(extent(image, isGreen).center().x() - red.x(), 50);
    EXPECT_GT(red.y() - extent(image, isYellow).center().y(), 50);
    EXPECT_EQ(count(image, isGrey), 0);
}

TEST_F(Framing, LeftLooksAlongXWithYToTheLeft)
{
    const QImage image = drawAxes(View::Left);
    EXPECT_LT(way(image, isGreen).x(), -50);
    EXPECT_GT(way(image, isYellow).y(), 50);
    EXPECT_EQ(count(image, isRed), 0);
}

TEST_F(Framing, TopLooksDownWithXToTheRightAndYUp)
{
    const QImage image = drawAxes(View::Top);
    const QPoint yellow = extent(image, isYellow).center();
    EXPECT_GT(extent(image, isRed).center().x() - yellow.x(), 50);
    EXPECT_GT(yellow.y() - extent(image, isGreen).center().y(), 50);
    EXPECT_EQ(count(image, isGrey), 0);
}

TEST_F(Framing, BottomLooksUpWithXToTheRightAndYDown)
{
    const QImage image = drawAxes(View::Bottom);
    EXPECT_GT(way(image, isRed).x(), 50);
    EXPECT_LT(way(image, isGreen).y(), -50);
    EXPECT_EQ(count(image, isYellow), 0);
}

TEST_F(Framing, IsoLooksFromTheFrontTheRightAndAbove)
{
    const QImage image = drawAxes(View::Iso);
    EXPECT_GT(way(image, isRed).x(), 20);
    EXPECT_LT(way(image, isRed).y(), -10);
    EXPECT_GT(way(image, isGreen).x(), 20);
    EXPECT_GT(way(image, isGreen).y(), 10);
    EXPECT_NEAR(way(image, isYellow).x(), 0, 2);
    EXPECT_GT(way(image, isYellow).y(), 30);
}

TEST_F(Framing, ASinglePointStandsInTheMiddle)
{
    auto mesh = std::make_shared<osg::Mesh>();
    mesh->positions = std::vector<osg::Vec3f>{{70, 80, 90}};
    mesh->points = std::vector<std::uint32_t>{0};
    const Root root = nodeOf(mesh, material({0.8f, 0.1f, 0.1f}));
    for (const View view : {View::Iso, View::Front, View::Top})
        EXPECT_EQ(drawnExtent(draw(root, plainOptions(view))), QRect(98, 48, 4, 4));
}

TEST_F(Framing, AModelFarFromTheOriginIsAsSharpAsOneInIt)
{
    const osg::Vec3f far = {4096000, -2048000, 1024000};
    const Root inMesh = nodeOf(box(far, {far.x + 10, far.y + 10, far.z + 10}), material({0.8f, 0.1f, 0.1f}));
    EXPECT_EQ(drawnExtent(draw(inMesh, plainOptions())), QRect(60, 10, 80, 80));
    const Root byTransform =
        placed(osg::translationMatrix(far), nodeOf(box({0, 0, 0}, {10, 10, 10}), material({0.8f, 0.1f, 0.1f})));
    EXPECT_EQ(drawnExtent(draw(byTransform, plainOptions())), QRect(60, 10, 80, 80));
}

TEST_F(Framing, SizesFromMicrometresToKilometresFillThePicture)
{
    for (const float size : {1e-3f, 1e6f}) {
        const Root root = nodeOf(box({0, 0, 0}, {size, size, size}), material({0.8f, 0.1f, 0.1f}));
        EXPECT_EQ(drawnExtent(draw(root, plainOptions())), QRect(60, 10, 80, 80));
    }
}

TEST_F(Framing, WhatIsUnusedOrInactiveDoesNotCount)
{
    const auto mesh = box({0, 0, 0}, {10, 10, 10});
    std::vector<osg::Vec3f> positions(mesh->positions.begin(), mesh->positions.end());
    positions.push_back({500, 500, 500});
    mesh->positions = positions;
    const osg::NodePtr hidden = placed(osg::translationMatrix({-300, 0, 0}), nodeOf(mesh, osg::MaterialPtr()));
    hidden->setActive(false);
    const Root root = group({hidden, nodeOf(mesh, material({0.8f, 0.1f, 0.1f}))});
    const QImage image = draw(root, plainOptions());
    EXPECT_EQ(drawnExtent(image), QRect(60, 10, 80, 80));
    EXPECT_EQ(count(image, [](QRgb pixel) { return !isBackdrop(pixel); }), 6400);
}

} // namespace render
