#include "protocol/Printable.h"

#include <gtest/gtest.h>

using protocol::letterSize;
using protocol::printable;
using protocol::printableLine;

TEST(Printable, ControlCharactersBecomeTheirBytes)
{
    EXPECT_EQ(printableLine("a\x1b[31mb"), "a\\x1b[31mb");
    EXPECT_EQ(printableLine("\x1b]0;title\x07"), "\\x1b]0;title\\x07");
    EXPECT_EQ(printableLine("a\x7f\r\b"), "a\\x7f\\x0d\\x08");
    EXPECT_EQ(printableLine("\u009b31m"), "\\xc2\\x9b31m") << "an escape sequence in one letter";
    EXPECT_EQ(printableLine(std::string_view("a\0b", 3)), "a\\x00b");
}

TEST(Printable, LettersThatTurnTheDirectionBecomeTheirBytes)
{
    EXPECT_EQ(printableLine("a\u202egpj.exe"), "a\\xe2\\x80\\xaegpj.exe");
    EXPECT_EQ(printableLine("\u2066\u2069"), "\\xe2\\x81\\xa6\\xe2\\x81\\xa9");
    EXPECT_EQ(printableLine("\u200e\u200f\u061c"), "\\xe2\\x80\\x8e\\xe2\\x80\\x8f\\xd8\\x9c");
    EXPECT_EQ(printableLine("\u200d\u2010\u2029\u202f\u2065\u206a"), "\u200d\u2010\u2029\u202f\u2065\u206a")
        << "their neighbours";
}

TEST(Printable, BytesThatAreNoLettersBecomeTheirNumbers)
{
    EXPECT_EQ(printableLine("\xff"
                            "a\xc3"),
              "\\xffa\\xc3");
    EXPECT_EQ(printableLine("\xed\xa0\x80"), "\\xed\\xa0\\x80") << "half a pair";
    EXPECT_EQ(printableLine("\x9b"), "\\x9b");
}

TEST(Printable, OtherLettersStay)
{
    EXPECT_EQ(printableLine("Zahnrad \u00e4\u00f6\u00fc \u6b6f\u8eca \U0001f600 \u00a0"),
              "Zahnrad \u00e4\u00f6\u00fc \u6b6f\u8eca \U0001f600 \u00a0");
    EXPECT_EQ(letterSize(""), 0U);
    EXPECT_EQ(letterSize("\u6b6f"), 3U);
}

TEST(Printable, LineEndsAndTabsStayInSeveralLinesAlone)
{
    EXPECT_EQ(printable("a\n\tb\x1b"), "a\n\tb\\x1b");
    EXPECT_EQ(printableLine("a\n\tb"), "a\\x0a\\x09b");
}
