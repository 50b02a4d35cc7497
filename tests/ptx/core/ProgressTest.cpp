#include "ptx/core/Progress.h"

#include <gmock/gmock.h>

#include <string>

using namespace ptx::core;

TEST(Stage, WordsAreThoseOfTheProgressFile)
{
    const char* words[] = {"Unknown",
                           "ReadAndProcess",
                           "Convert",
                           "ProcessStructure",
                           "Merge",
                           "Stitch",
                           "FixSurfaceOrientation",
                           "Tessellate",
                           "BuildOsgTree",
                           "Finalize",
                           "Write",
                           "Finished"};
    for (int i = 0; i < 12; ++i)
        EXPECT_STREQ(stageWord(static_cast<Stage>(i)), words[i]);
}

TEST(Stage, StartsRiseStrictlyAndEndAtOneHundred)
{
    for (int i = 1; i < 12; ++i)
        EXPECT_GT(stageStart(static_cast<Stage>(i)), stageStart(static_cast<Stage>(i - 1))) << i;
    EXPECT_EQ(stageStart(Stage::Finished), 100);
    EXPECT_EQ(stageEnd(Stage::Finished), 100);
}

TEST(Progress, ReportsRiseWithinTheRangeOfTheirStage)
{
    Progress progress;
    progress.begin(Stage::ReadAndProcess);
    EXPECT_EQ(progress.percent(), 1);
    progress.report(0.5);
    EXPECT_EQ(progress.percent(), 20);
    progress.report(1);
    EXPECT_EQ(progress.percent(), 39);
    progress.report(7);
    EXPECT_EQ(progress.percent(), 39);
}

TEST(Progress, AStepIsItsShareOfTheStage)
{
    Progress progress;
    progress.begin(Stage::Merge);
    EXPECT_EQ(progress.percent(), 54);
    progress.beginStep(0.25, 0.75);
    progress.report(0);
    EXPECT_EQ(progress.percent(), 55);
    progress.report(1);
    EXPECT_EQ(progress.percent(), 59);
    progress.begin(Stage::Stitch);
    progress.report(1);
    EXPECT_EQ(progress.percent(), 65);
}

TEST(Progress, NeverFalls)
{
    Progress progress;
    progress.begin(Stage::Tessellate);
    progress.report(0.9);
    const int reached = progress.percent();
    progress.report(0.1);
    EXPECT_EQ(progress.percent(), reached);
    progress.begin(Stage::Convert);
    EXPECT_EQ(progress.percent(), reached + 1);
    EXPECT_EQ(progress.stage(), Stage::Convert);
}

TEST(Progress, EveryNewStageRaisesTheNumber)
{
    Progress progress;
    int last = 0;
    for (int i = 1; i < 12; ++i) {
        progress.begin(static_cast<Stage>(i));
        progress.report(1);
        EXPECT_GT(progress.percent(), last) << i;
        last = progress.percent();
    }
    EXPECT_EQ(last, 100);
}

TEST(Progress, SignsCountReportsThatDoNotRaiseTheNumber)
{
    Progress progress;
    const auto before = progress.signs();
    progress.touch();
    progress.report(0);
    EXPECT_EQ(progress.signs(), before + 2);
}

TEST(Progress, TellsItsStagesWithTheirTimesInTheirOrder)
{
    Progress progress;
    EXPECT_EQ(progress.stageTimes(), "");
    progress.begin(Stage::ReadAndProcess);
    progress.begin(Stage::Tessellate);
    EXPECT_THAT(progress.stageTimes(), testing::MatchesRegex("ReadAndProcess [0-9.]+ s, Tessellate [0-9.]+ s"));
}

TEST(Progress, GoesOnFromWhatWasReached)
{
    Progress progress;
    progress.goOnFrom(70);
    progress.begin(Stage::ReadAndProcess);
    EXPECT_EQ(progress.percent(), 71);
    progress.begin(Stage::Write);
    EXPECT_EQ(progress.percent(), 96);
}
