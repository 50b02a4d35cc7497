#include "ptx/readers/step/p21/Records.h"

#include <gtest/gtest.h>

using namespace ptx::step::p21;

TEST(Records, CountLinesFromOne)
{
    EXPECT_EQ(lineOf("a\nb\r\nc", 0), 1U);
    EXPECT_EQ(lineOf("a\nb\r\nc", 2), 2U);
    EXPECT_EQ(lineOf("a\nb\r\nc", 5), 3U);
    EXPECT_EQ(lineOf("a\nb", 100), 2U);
}

TEST(Records, DescribeDamageByNumberAndLine)
{
    EXPECT_EQ(describe("x\n#12=A(;", {2, 12, "it is odd"}), "#12 in line 2: it is odd");
    EXPECT_EQ(describe("x\n#12=A(;", {0, 0, "it is odd"}), "line 1: it is odd");
}
