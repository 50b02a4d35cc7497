#include "ptx/core/Limits.h"

#include <gtest/gtest.h>

#include <initializer_list>

using namespace ptx::core;

namespace
{

constexpr std::uint64_t TwoMegabytes = 2 * 1024 * 1024;

Settings settings(std::initializer_list<const char*> assignments)
{
    Settings result;
    for (const char* assignment : assignments)
        EXPECT_EQ(result.assign(assignment), std::nullopt);
    return result;
}

} // namespace

TEST(Limits, TimeGrowsWithTheInput)
{
    Limits limits(settings({"limit.time=10", "limit.time-per-mb=5"}), TwoMegabytes);
    EXPECT_EQ(limits.seconds(), 20);
    EXPECT_FALSE(limits.check({19.9, 19, 0}, 1));
    const Trouble trouble = limits.check({20.1, 20, 0}, 2);
    ASSERT_TRUE(trouble);
    EXPECT_EQ(trouble->code, ExitCode::TimeLimit);
    EXPECT_EQ(trouble->message, "the conversion took longer than its limit of 20 s; raise limit.time or "
                                "limit.time-per-mb, or set limit.time=0");
}

TEST(Limits, MemoryGrowsWithTheInput)
{
    Limits limits(settings({"limit.memory=100", "limit.memory-per-mb=30"}), TwoMegabytes);
    EXPECT_FALSE(limits.check({1, 1, 159}, 1));
    const Trouble trouble = limits.check({1, 1, 161}, 2);
    ASSERT_TRUE(trouble);
    EXPECT_EQ(trouble->code, ExitCode::MemoryLimit);
    EXPECT_EQ(trouble->message, "the conversion needs more memory than its limit of 160 MB; raise limit.memory or "
                                "limit.memory-per-mb, or set limit.memory=0");
}

TEST(Limits, BothGrowWithFurtherFiles)
{
    Limits limits(settings({"limit.time=10", "limit.time-per-mb=5", "limit.memory=100", "limit.memory-per-mb=30"}),
                  TwoMegabytes);
    limits.addInput(TwoMegabytes);
    limits.addInput(TwoMegabytes / 2);
    EXPECT_EQ(limits.seconds(), 35);
    EXPECT_EQ(limits.megabytes(), 250);
}

TEST(Limits, StallIsNoProgressAndNoWorkTogether)
{
    Limits limits(settings({"limit.stall=30"}), 0);
    EXPECT_FALSE(limits.check({100, 50, 0}, 7));
    EXPECT_FALSE(limits.check({129, 50.1, 0}, 7));
    EXPECT_FALSE(limits.check({130.5, 50.1, 0}, 8)) << "progress starts the clock anew";
    EXPECT_FALSE(limits.check({160, 50.2, 0}, 8));
    const Trouble trouble = limits.check({161, 50.3, 0}, 8);
    ASSERT_TRUE(trouble);
    EXPECT_EQ(trouble->code, ExitCode::StallLimit);
}

TEST(Limits, WorkWithoutProgressIsNoStall)
{
    Limits limits(settings({"limit.stall=30"}), 0);
    EXPECT_FALSE(limits.check({1, 1, 0}, 7));
    EXPECT_FALSE(limits.check({50, 20, 0}, 7));
    EXPECT_FALSE(limits.check({90, 30, 0}, 7));
}

TEST(Limits, WorkWithoutProgressIsLimitedWhereAskedByTheSizeOfTheInput)
{
    Limits limits(settings({"limit.work=10", "limit.work-per-mb=5", "limit.time=0"}), TwoMegabytes);
    EXPECT_FALSE(limits.check({100, 100, 0}, 0)) << "not asked for";
    limits.limitWork();
    EXPECT_FALSE(limits.check({101, 101, 0}, 8)) << "progress";
    EXPECT_FALSE(limits.check({120.9, 120.9, 0}, 8));
    EXPECT_FALSE(limits.check({121, 121.5, 0}, 9)) << "progress starts the work anew";
    EXPECT_FALSE(limits.check({131, 161.5, 0}, 9)) << "four threads are no more than one";
    EXPECT_FALSE(limits.check({221, 141, 0}, 9)) << "waiting is no work";
    const Trouble trouble = limits.check({222, 142, 0}, 9);
    ASSERT_TRUE(trouble);
    EXPECT_EQ(trouble->code, ExitCode::StallLimit);
    EXPECT_EQ(trouble->message, "the processor worked for 21 s without progress, as damaged files of this format make "
                                "it; raise limit.work or limit.work-per-mb, or set limit.work=0");
}

TEST(Limits, ZeroSwitchesEachOff)
{
    Limits limits(settings({"limit.time=0", "limit.memory=0", "limit.stall=0", "limit.work=0"}), TwoMegabytes);
    limits.limitWork();
    EXPECT_FALSE(limits.check({1e6, 0, 1e6}, 0));
    EXPECT_FALSE(limits.check({2e6, 0, 1e6}, 0));
}

TEST(Limits, UsageOfThisProcessIsMeasured)
{
    const Usage usage = measureUsage();
    EXPECT_GT(usage.megabytes, 1);
    EXPECT_GT(usage.cpuSeconds, 0);
}
