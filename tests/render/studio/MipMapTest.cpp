#include "render/studio/MipMap.h"

#include "scene/ColorSpace.h"

#include <gtest/gtest.h>

namespace render::studio
{

namespace
{

using Filter = osg::TextureSampler::Filter;
using Wrap = osg::TextureSampler::Wrap;

/// Red, green, blue and white from left to right, in one row; each 51 times its column in alpha.
MipMap stripes(bool hasColors = false)
{
    QImage image(4, 1, QImage::Format_RGBA8888);
    const QColor colors[] = {QColor(255, 0, 0, 0), QColor(0, 255, 0, 51), QColor(0, 0, 255, 102),
                             QColor(255, 255, 255, 153)};
    for (int i = 0; i < 4; ++i)
        image.setPixelColor(i, 0, colors[i]);
    return MipMap(image, hasColors);
}

osg::TextureSampler nearest(Wrap wrapU, Wrap wrapV = Wrap::Repeat)
{
    return {wrapU, wrapV, Filter::Nearest, Filter::Nearest};
}

/// 51 times the column.
int columnAt(float u, Wrap wrap)
{
    return int(std::lround(stripes().at({u, 0.5f}, 1, nearest(wrap)).w() * 5));
}

void expectColumns(Wrap wrap, const std::vector<int>& expected)
{
    std::vector<int> seen;
    for (int i = -5; i < 9; ++i) // quarters of the picture, from beyond its left border on
        seen.push_back(columnAt((float(i) + 0.5f) / 4, wrap));
    EXPECT_EQ(seen, expected);
}

} // namespace

TEST(MipMap, GoesOnBeyondItsBordersAsTheSamplerSays)
{
    expectColumns(Wrap::Repeat, {3, 0, 1, 2, 3, 0, 1, 2, 3, 0, 1, 2, 3, 0});
    expectColumns(Wrap::Mirrored, {3, 3, 2, 1, 0, 0, 1, 2, 3, 3, 2, 1, 0, 0});
    expectColumns(Wrap::Clamp, {0, 0, 0, 0, 0, 0, 1, 2, 3, 3, 3, 3, 3, 3});
    EXPECT_EQ(columnAt(-100001 + 0.3f, Wrap::Repeat), 1);
}

TEST(MipMap, GoesOnForItselfDownwards)
{
    QImage image(1, 2, QImage::Format_RGBA8888);
    image.setPixelColor(0, 0, Qt::red);
    image.setPixelColor(0, 1, Qt::green);
    const MipMap map(image, false);
    EXPECT_GT(map.at({0.5f, 1.25f}, 1, nearest(Wrap::Clamp)).x(), 0.9f);
    EXPECT_GT(map.at({0.5f, 1.25f}, 1, nearest(Wrap::Repeat, Wrap::Clamp)).y(), 0.9f);
    EXPECT_GT(map.at({0.5f, 1.25f}, 1, nearest(Wrap::Repeat, Wrap::Mirrored)).y(), 0.9f);
}

TEST(MipMap, LinearIsBetweenPixelsAndNearestIsNot)
{
    const osg::TextureSampler linear = {Wrap::Repeat, Wrap::Repeat, Filter::Linear, Filter::Linear};
    const Eigen::Vector4f between = stripes().at({0.25f, 0.5f}, 1, linear);
    EXPECT_NEAR(between.x(), 0.5f, 0.01f);
    EXPECT_NEAR(between.y(), 0.5f, 0.01f);
    EXPECT_NEAR(stripes().at({0.26f, 0.5f}, 1, nearest(Wrap::Repeat)).x(), 0, 0.01f);
    EXPECT_NEAR(stripes().at({0, 0.5f}, 1, linear).y(), 0.5f, 0.01f) << "between the last and the first";
}

TEST(MipMap, ReadsColorsAsLightAndOthersAsTheyAre)
{
    QImage image(1, 1, QImage::Format_RGBA8888);
    image.fill(QColor(128, 128, 128, 128));
    const Eigen::Vector4f light = MipMap(image, true).at({0, 0}, 1, {});
    EXPECT_NEAR(light.x(), osg::linearFromDisplay(128 / 255.0f), 1e-4f);
    EXPECT_NEAR(light.w(), 128 / 255.0f, 1e-4f);
    EXPECT_NEAR(MipMap(image, false).at({0, 0}, 1, {}).x(), 128 / 255.0f, 1e-4f);
}

TEST(MipMap, FromFarAwayItIsTheMeanOfItsLight)
{
    const Eigen::Vector4f mean = stripes(true).at({0.1f, 0.5f}, 100, {});
    EXPECT_NEAR(mean.x(), 0.5f, 0.01f);
    EXPECT_NEAR(mean.z(), 0.5f, 0.01f);
    EXPECT_NEAR(mean.w(), 0.3f, 0.01f);
    const Eigen::Vector4f half = stripes(true).at({0.25f, 0.5f}, 2, nearest(Wrap::Clamp));
    EXPECT_NEAR(half.x(), 0.5f, 0.01f) << "of the first two";
    EXPECT_NEAR(half.z(), 0, 0.01f);
}

TEST(MipMap, OddSidesAndWildPlacesAreRead)
{
    QImage image(5, 3, QImage::Format_RGBA8888);
    image.fill(QColor(255, 0, 0));
    const MipMap map(image, true);
    for (const float place : {0.0f, -1e30f, 1e30f, std::numeric_limits<float>::infinity()})
        for (const float footprint : {0.1f, 1.5f, 3.0f, 1e30f, std::numeric_limits<float>::quiet_NaN()})
            for (const Wrap wrap : {Wrap::Repeat, Wrap::Clamp, Wrap::Mirrored})
                EXPECT_NEAR(map.at({place, place}, footprint, {wrap, wrap, Filter::Any, Filter::Any}).x(), 1, 1e-3f);
}

} // namespace render::studio
