#include "protocol/ExitCode.h"

#include <gtest/gtest.h>

using namespace protocol;

TEST(ExitCode, NumbersAreThoseThatOtherConvertersKnow)
{
    EXPECT_EQ(number(ExitCode::NoExternalPartsEither), -1);
    EXPECT_EQ(number(ExitCode::Success), 0);
    EXPECT_EQ(number(ExitCode::WrongUse), 2);
    EXPECT_EQ(number(ExitCode::InputUnreadable), 3);
    EXPECT_EQ(number(ExitCode::OldStylarFile), 4);
    EXPECT_EQ(number(ExitCode::NoExternalParts), 5);
    EXPECT_EQ(number(ExitCode::Unsupported), 6);
    EXPECT_EQ(number(ExitCode::Damaged), 7);
    EXPECT_EQ(number(ExitCode::OutputFailed), 8);
    EXPECT_EQ(number(ExitCode::MemoryLimit), 10);
    EXPECT_EQ(number(ExitCode::TimeLimit), 11);
    EXPECT_EQ(number(ExitCode::StallLimit), 12);
    EXPECT_EQ(number(ExitCode::Cancelled), 21);
    EXPECT_EQ(number(ExitCode::NothingToImport), 25);
}

TEST(ExitCode, IsComparedWithTheNumberOfAProcess)
{
    EXPECT_TRUE(5 == ExitCode::NoExternalParts);
    EXPECT_TRUE(ExitCode::NoExternalParts == 5);
    EXPECT_TRUE(6 != ExitCode::NoExternalParts);
}

TEST(ExitCode, SignalsComeBackFromTheCodesTheyAreTurnedInto)
{
    EXPECT_EQ(exitCodeOfSignal(11), 139);
    EXPECT_EQ(signalOf(139), 11);
    EXPECT_EQ(signalOf(129), 1);
    EXPECT_EQ(signalOf(192), 64);
}

TEST(ExitCode, OtherCodesTellOfNoSignal)
{
    for (const int code : {-1, 0, 25, 127, 128, 193, 250, 255})
        EXPECT_FALSE(signalOf(code)) << code;
}
