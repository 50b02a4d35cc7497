#include "scene/IdSet.h"

#include <gtest/gtest.h>

#include <random>
#include <set>

namespace
{

TEST(IdSetTest, AnIdIsNewOnce)
{
    osg::IdSet ids;
    EXPECT_FALSE(ids.contains(7));
    EXPECT_TRUE(ids.insert(7));
    EXPECT_FALSE(ids.insert(7));
    EXPECT_TRUE(ids.contains(7));
    for (const std::uint32_t other : {0u, 6u, 8u, 71u, 4095u, 4096u, 4103u, ~0u})
        EXPECT_FALSE(ids.contains(other)) << other;
}

TEST(IdSetTest, HoldsWhatASetHolds)
{
    std::mt19937 random(1);
    osg::IdSet ids;
    std::set<std::uint32_t> expected;
    for (int i = 0; i < 5000; ++i) {
        const auto id = static_cast<std::uint32_t>(random() % 20'000);
        EXPECT_EQ(ids.insert(id), expected.insert(id).second) << id;
    }
    for (std::uint32_t id = 0; id < 25'000; ++id)
        EXPECT_EQ(ids.contains(id), expected.contains(id)) << id;
}

} // namespace
