#include "ptx/scene/NodeNames.h"

#include <gtest/gtest.h>

using namespace ptx::model;
using namespace ptx::scene;

namespace
{

std::string named(const std::string& occurrence, const std::string& product)
{
    return nodeName({0, occurrence, {}, NoAppearance, true, {}}, Product{product, {}, NoBody, NoAppearance, {}, {}});
}

} // namespace

TEST(NodeNames, TheOccurrenceNamesTheNode)
{
    EXPECT_EQ(named("left wheel", "wheel"), "left wheel");
    EXPECT_EQ(named("轮", "wheel"), "轮");
}

TEST(NodeNames, CountersAndAddressesGiveWayToTheProduct)
{
    EXPECT_EQ(named("", "wheel"), "wheel");
    EXPECT_EQ(named("12", "wheel"), "wheel");
    EXPECT_EQ(named("NAUO12", "wheel"), "wheel");
    EXPECT_EQ(named("=>[0:1:1:2]", "wheel"), "wheel");
}

TEST(NodeNames, ACounterIsBetterThanNothing)
{
    EXPECT_EQ(named("NAUO12", ""), "NAUO12");
}
