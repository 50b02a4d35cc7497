#include "ptx/readers/jt/graph/Placement.h"

#include <gtest/gtest.h>

using namespace ptx::jt::graph;

TEST(JtPlacement, InnerOneComesFirst)
{
    Placement twice = NoMove;
    twice[0] = twice[5] = twice[10] = 2;
    Placement moved = NoMove;
    moved[12] = 5;
    EXPECT_EQ(combined(moved, twice)[12], 10);
    EXPECT_EQ(combined(twice, moved)[12], 5);
}
