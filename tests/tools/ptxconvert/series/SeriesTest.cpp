#include "tools/ptxconvert/series/Series.h"

#include <gmock/gmock.h>

#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <csignal>
#include <cstdio>
#include <string>
#include <thread>

namespace
{

using namespace std::chrono_literals;
using ptxconvert::SeriesItem;
using testing::HasSubstr;
using testing::Not;

struct Ended {
    int code = 0;
    std::string output;
    std::string errors;
};

/// Items of these names; the work is given the name.
Ended run(const std::vector<std::string>& names, unsigned most, const std::function<int(const std::string&)>& work)
{
    std::vector<SeriesItem> items;
    for (const std::string& name : names)
        items.push_back({name, {}});
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    Ended end;
    end.code = ptxconvert::runSeries(items, most, [&work](const SeriesItem& item) -> int {
        ::_exit(work(item.input)); // not through the test's own end
    });
    end.output = testing::internal::GetCapturedStdout();
    end.errors = testing::internal::GetCapturedStderr();
    return end;
}

TEST(Series, EachItemHasALineAndTheFirstFailureCounts)
{
    const Ended end = run({"good", "bad", "worse"}, 1, [](const std::string& name) {
        return name == "good" ? 0 : name == "bad" ? 7 : 3;
    });
    EXPECT_EQ(end.code, 7);
    EXPECT_THAT(end.output, testing::MatchesRegex("   0 +[0-9.]+  good\n   7 +[0-9.]+  bad\n   3 +[0-9.]+  worse\n"
                                                  "1 of 3 files converted\n"));
    EXPECT_EQ(run({"good"}, 2, [](const std::string&) { return 0; }).code, 0);
}

TEST(Series, ACrashCostsItsOwnItem)
{
    const Ended end = run({"a", "crash", "b"}, 2, [](const std::string& name) {
        if (name == "crash")
            ::kill(::getpid(), SIGKILL);
        return 0;
    });
    EXPECT_EQ(end.code, 128 + SIGKILL);
    EXPECT_THAT(end.output, HasSubstr(" 137 "));
    EXPECT_THAT(end.output, HasSubstr("2 of 3 files converted\n"));
}

TEST(Series, WhatAnItemSaysComesInOnePiece)
{
    const Ended end = run({"a", "b", "c", "d"}, 4, [](const std::string& name) {
        for (int i = 0; i < 50; ++i) {
            (void)!::write(STDERR_FILENO, name.data(), 1);
            std::this_thread::sleep_for(1ms);
        }
        return 0;
    });
    for (const char letter : {'a', 'b', 'c', 'd'})
        EXPECT_THAT(end.errors, HasSubstr(std::string(50, letter)));
}

/// Each writes at its beginning and its end.
TEST(Series, AsManyRunAtATimeAsAreWanted)
{
    for (const int most : {1, 3}) {
        int ends[2] = {};
        ASSERT_EQ(::pipe(ends), 0);
        run({"a", "b", "c", "d", "e", "f"}, static_cast<unsigned>(most), [&ends](const std::string&) {
            (void)!::write(ends[1], "+", 1);
            std::this_thread::sleep_for(100ms);
            (void)!::write(ends[1], "-", 1);
            return 0;
        });
        ::close(ends[1]);
        char step = 0;
        int running = 0, highest = 0;
        while (::read(ends[0], &step, 1) == 1)
            highest = std::max(highest, running += step == '+' ? 1 : -1);
        ::close(ends[0]);
        EXPECT_EQ(highest, most);
    }
}

TEST(Series, ASignalEndsThoseThatRunAndNoOtherBegins)
{
    const pid_t self = ::getpid();
    const auto began = std::chrono::steady_clock::now();
    const Ended end = run({"first", "second", "third"}, 2, [self](const std::string& name) {
        if (name == "second")
            ::kill(self, SIGTERM);
        ::sleep(60);
        return 0;
    });
    EXPECT_LT(std::chrono::steady_clock::now() - began, 30s);
    EXPECT_EQ(end.code, 21);
    EXPECT_THAT(end.output, HasSubstr("first"));
    EXPECT_THAT(end.output, Not(HasSubstr("third")));
    EXPECT_THAT(end.output, HasSubstr("0 of 3 files converted"));
}

} // namespace
