#include "files/glb/GlbPlacement.h"

#include <gtest/gtest.h>

#include <limits>

namespace
{

using files::glb::Json;
using files::glb::shrunk;
using files::glb::Unscaled;
using files::glb::unscaled;

/// A quarter of a turn about Z with this scale.
osg::Matrix turned(float scale)
{
    return {{0, scale, 0, 0, -scale, 0, 0, 0, 0, 0, scale, 0, 7, 8, 9, 1}};
}

TEST(GlbPlacement, WhatIsShrunkStandsAtItsPlace)
{
    EXPECT_EQ(shrunk({{"matrix", turned(2).values}}),
              (Json{{"scale", {1e-6f, 1e-6f, 1e-6f}}, {"translation", {7.0f, 8.0f, 9.0f}}}));
    EXPECT_EQ(shrunk({{"translation", {4.0f, 5.0f, 6.0f}}, {"scale", {2.0f, 3.0f, 4.0f}}}),
              (Json{{"scale", {1e-6f, 1e-6f, 1e-6f}}, {"translation", {4.0f, 5.0f, 6.0f}}}));
    EXPECT_EQ(shrunk(Json::object()), (Json{{"scale", {1e-6f, 1e-6f, 1e-6f}}}));
}

TEST(GlbPlacement, ScaleGoesIntoWhatIsBelow)
{
    const Unscaled result = unscaled(turned(25.4f), 0.001);
    EXPECT_DOUBLE_EQ(result.below, 0.0254);
    EXPECT_EQ(result.matrix, (osg::Matrix{{0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 1, 0, 0.007f, 0.008f, 0.009f, 1}}));
}

TEST(GlbPlacement, StretchesStayInTheTransform)
{
    const Unscaled result = unscaled({{0.001f, 0, 0, 0, 0, -0.002f, 0, 0, 0, 0, 0.005f, 0, 0, 0, 0, 1}}, 1);
    EXPECT_DOUBLE_EQ(result.below, 0.001);
    EXPECT_FLOAT_EQ(result.matrix[0], 1);
    EXPECT_FLOAT_EQ(result.matrix[5], -2);
    EXPECT_FLOAT_EQ(result.matrix[10], 5);
}

TEST(GlbPlacement, RoundingIsNoScale)
{
    const Unscaled result = unscaled(turned(1.000004f), 0.001);
    EXPECT_EQ(result.below, 0.001);
    EXPECT_EQ(result.matrix[1], 1.000004f);
    EXPECT_EQ(unscaled(turned(0.0010000004f), 1).below, 0.001);
}

TEST(GlbPlacement, WhatHasNoSizeKeepsItsTransform)
{
    for (const float scale : {0.0f, std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity()})
        EXPECT_EQ(unscaled(turned(scale), 0.5).below, 0.5) << scale;
}

} // namespace
