#include "ptx/core/Log.h"

#include "tests/roads/ptxconvert/TempFolder.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace ptx::core;
using namespace ptxtest;

TEST(Log, WritesEachLineAtOnce)
{
    const TempFolder folder;
    Log log(folder.file("x.log"));
    log.info("first");
    EXPECT_NE(contentOf(folder.file("x.log")).find(" s  first\n"), std::string::npos);
    log.warning("second");
    EXPECT_NE(contentOf(folder.file("x.log")).find(" s  Warning: second\n"), std::string::npos);
}

TEST(Log, ErrorStandsAtTheStartOfItsLine)
{
    const TempFolder folder;
    Log log(folder.file("x.log"));
    log.error("no way");
    EXPECT_EQ(contentOf(folder.file("x.log")), "Error: no way\n");
}

TEST(Log, StartsTheFileAnew)
{
    const TempFolder folder;
    folder.write("x.log", "Error: of the run before\n");
    const Log log(folder.file("x.log"));
    EXPECT_EQ(contentOf(folder.file("x.log")), "");
}

TEST(Log, NamesFromAFileCannotForgeLines)
{
    const TempFolder folder;
    Log log(folder.file("x.log"));
    log.error("part \"a\nError: forged\"");
    EXPECT_EQ(contentOf(folder.file("x.log")), "Error: part \"a Error: forged\"\n");
}

TEST(Log, CountsWarningsBeyondTheMostItLists)
{
    const TempFolder folder;
    Log log(folder.file("x.log"));
    for (int i = 0; i < Log::MostWarnings + 50; ++i)
        log.warning("again");
    const std::string text = contentOf(folder.file("x.log"));
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), Log::MostWarnings + 1);
    EXPECT_NE(text.find("further warnings are counted, not listed"), text.npos);
    EXPECT_EQ(log.warnings(), Log::MostWarnings + 50);
}

TEST(Log, WithoutAFolderItHasNoEffect)
{
    const TempFolder folder;
    Log log(folder.file("missing/x.log"));
    EXPECT_FALSE(log.isOpen());
    log.info("nobody reads this");
    EXPECT_TRUE(folder.names().empty());
}

TEST(Log, GoesOnWithTheFileAndTheTimeOfAnAttemptBefore)
{
    const TempFolder folder;
    folder.write("x.log", "of before\n");
    Log log(folder.file("x.log"), std::chrono::steady_clock::now() - std::chrono::seconds(100));
    log.error("no way");
    EXPECT_EQ(contentOf(folder.file("x.log")), "of before\nError: no way\n");
    EXPECT_GE(log.seconds(), 100);
}

/// Somebody else may have put it there.
TEST(Log, ALinkInItsPlaceIsNotWrittenThrough)
{
    const TempFolder folder;
    folder.write("other.txt", "keep");
    std::filesystem::create_symlink("other.txt", folder.file("x.log"));
    EXPECT_FALSE(Log(folder.file("x.log")).isOpen());
    EXPECT_EQ(contentOf(folder.file("other.txt")), "keep");
}
