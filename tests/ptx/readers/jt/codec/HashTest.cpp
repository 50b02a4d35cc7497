#include "ptx/readers/jt/codec/Hash.h"

#include <gtest/gtest.h>

#include <vector>

using namespace ptx::jt::codec;

TEST(JtHash, WordsGiveKnownSums)
{
    EXPECT_EQ(hash32({}, 0), 0xbd49d10du);
    EXPECT_EQ(hash32(std::vector<std::int32_t>{1, 2, 3}, 0), 0xe4f3273bu);
    EXPECT_EQ(hash32(std::vector<std::int32_t>{1, 2, 3, 4}, 7), 0xb1d5ccc1u);
}

TEST(JtHash, HalfWordsGiveKnownSums)
{
    EXPECT_EQ(hash16(std::vector<std::int32_t>{1, 2, 3}, 0), 0x40d1a02eu);
    EXPECT_EQ(hash16(std::vector<std::int32_t>{1, 2, 3, 4, 5, 6, 7}, 0), 0xc397905au);
}
