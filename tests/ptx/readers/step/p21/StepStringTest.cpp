#include "ptx/readers/step/p21/StepString.h"

#include <gtest/gtest.h>

using namespace ptx::step::p21;

TEST(StepString, EndsAtItsQuote)
{
    EXPECT_EQ(quotedString("'a''b','c'"), "'a''b'");
    EXPECT_EQ(quotedString("''"), "''");
    EXPECT_EQ(quotedString("'never"), "");
    EXPECT_EQ(quotedString("'never''"), "");
    EXPECT_EQ(quotedString("#12"), "");
}

TEST(StepString, LettersOfEveryNotationAreDecoded)
{
    EXPECT_EQ(decodedString("'it''s a \\\\ b'"), "it's a \\ b");
    EXPECT_EQ(decodedString("'\\X\\E4\\S\\d'"), "ää");
    EXPECT_EQ(decodedString("'\\X2\\4E2D6587\\X0\\.stp'"), "中文.stp");
    EXPECT_EQ(decodedString("'\\X2\\D83DDE00\\X0\\'"), "😀");
    EXPECT_EQ(decodedString("'\\X4\\0001F600\\X0\\'"), "😀");
}

TEST(StepString, WhatIsNoSequenceStays)
{
    EXPECT_EQ(decodedString("'\\X2\\4E2D'"), "\\X2\\4E2D");
    EXPECT_EQ(decodedString("'\\X\\G1'"), "\\X\\G1");
    EXPECT_EQ(decodedString("'a\\'"), "a\\");
}
