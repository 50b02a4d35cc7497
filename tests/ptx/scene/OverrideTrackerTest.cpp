#include "ptx/scene/OverrideTracker.h"

#include <gtest/gtest.h>

using namespace ptx::model;
using namespace ptx::scene;

namespace
{
const std::vector<PathOverride> Overrides = {{{{1, 0}, {2, 3}}, 7}, {{{2, 3}}, 5}};
}

TEST(OverrideTracker, TheLongestPathThatEndsHereWins)
{
    OverrideTracker tracker(Overrides);
    EXPECT_EQ(tracker.enter(1, 0), NoAppearance);
    EXPECT_EQ(tracker.enter(2, 3), 7);
    tracker.leave();
    tracker.leave();
    EXPECT_EQ(tracker.enter(1, 1), NoAppearance);
    EXPECT_EQ(tracker.enter(2, 3), 5);
}

TEST(OverrideTracker, OtherChildrenHaveNone)
{
    OverrideTracker tracker(Overrides);
    tracker.enter(1, 0);
    EXPECT_EQ(tracker.enter(2, 2), NoAppearance);
}
