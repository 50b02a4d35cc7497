#include "ptx/core/TrialRun.h"

#include <gmock/gmock.h>

#include <csignal>
#include <stdexcept>

using namespace ptx::core;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

TEST(TrialRun, TellsEachThatCrashes)
{
    Progress progress;
    const auto work = [](std::size_t i) {
        if (i == 1)
            std::raise(SIGSEGV);
        if (i == 4)
            std::raise(SIGABRT);
    };
    EXPECT_THAT(crashesOf(6, work, progress), ElementsAre(1, 4));
}

TEST(TrialRun, NothingOfTheWorkStays)
{
    Progress progress;
    int done = 0;
    EXPECT_THAT(crashesOf(
                    3, [&](std::size_t) { ++done; }, progress),
                IsEmpty());
    EXPECT_EQ(done, 0);
}

TEST(TrialRun, AnExceptionIsNoCrash)
{
    Progress progress;
    const auto work = [](std::size_t i) {
        if (i == 0)
            throw std::runtime_error("no");
        std::raise(SIGFPE);
    };
    EXPECT_THAT(crashesOf(2, work, progress), ElementsAre(1));
}

TEST(TrialRun, AnEndThatIsNoCrashEndsTheTrial)
{
    Progress progress;
    const auto work = [](std::size_t i) { std::raise(i == 0 ? SIGSEGV : SIGKILL); };
    EXPECT_THAT(crashesOf(5, work, progress), ElementsAre(0));
}

TEST(TrialRun, ThereIsAMostOfCrashes)
{
    Progress progress;
    EXPECT_THAT(crashesOf(
                    300, [](std::size_t) { std::raise(SIGSEGV); }, progress),
                SizeIs(200));
}
