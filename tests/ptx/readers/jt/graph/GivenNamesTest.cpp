#include "ptx/readers/jt/graph/GivenNames.h"

#include <gtest/gtest.h>

using namespace ptx::jt::graph;

TEST(JtGivenNames, NamesLoseTheirTailOnlyWhenItIsWhole)
{
    EXPECT_EQ(shownName("shaft.asm;55;0:"), "shaft");
    EXPECT_EQ(shownName("a;b.part;-1;99999999999:"), "a;b");
    EXPECT_EQ(shownName("rod;1:"), "rod;1:");
    EXPECT_EQ(shownName("rod;x;0:"), "rod;x;0:");
    EXPECT_EQ(shownName(".part"), ".part");
}
