#include "ptx/readers/jt/shapes/Directions.h"

#include <gtest/gtest.h>

using namespace ptx::jt::codec;
using namespace ptx::jt::shapes;

TEST(JtDirections, CodesGiveKnownDirections)
{
    const Vector first = directionOf(0, 7, 0, 0, 8);
    EXPECT_NEAR(first[0], 0.707107, 1e-5);
    EXPECT_NEAR(first[1], 0, 1e-5);
    EXPECT_NEAR(first[2], 0.707107, 1e-5);
    const Vector second = directionOf(3, 5, 12, 7, 8);
    EXPECT_NEAR(second[0], 0.016829, 1e-5);
    EXPECT_NEAR(second[1], -0.750083, 1e-5);
    EXPECT_NEAR(second[2], 0.661130, 1e-5);
}
