#include "tests/converter/ConverterTest.h"

#include <gtest/gtest.h>

#include <QTest>

using namespace znCADFileTypes;

namespace
{

class ConversionProgress : public ConverterTest
{
protected:
    /// A script that executes each command when the test lets it, and says when it has.
    QByteArray inSteps(const QList<QByteArray>& commands, int first = 0) const
    {
        QByteArray script;
        for (int step = first; step < first + commands.size(); ++step)
            script += line("wait-for", QStringLiteral("go %1").arg(step)) + commands[step - first] + "\n" +
                      line("write", QStringLiteral("done %1").arg(step), "x");
        return script;
    }

    /// Lets one command happen. Its notification waits when it has happened, and is delivered.
    void step(int number)
    {
        write(QStringLiteral("go %1").arg(number), "");
        ASSERT_TRUE(waitUntil([&] { return has(QStringLiteral("done %1").arg(number)); })) << number;
        drainEvents();
    }

    /// Runs `job` to its end, whose script takes `count` steps.
    QStringList runSteps(znPtxConverterJob& job, int count)
    {
        ConversionLog log(job);
        int starts = 0;
        QObject::connect(&job, &znAbstractJob::started, [&] { ++starts; });
        job.run();
        EXPECT_TRUE(waitUntil([&] { return starts == 1; }));
        for (int number = 0; number < count; ++number)
            step(number);
        EXPECT_TRUE(waitUntil([&] { return log.ends == 1; }));
        job.disconnect();
        return log.lines().mid(2, log.lines().size() - 3);
    }

    /// What is reported when the progress file changes in this way.
    QStringList reportsOf(const QList<QByteArray>& commands)
    {
        return runSteps(*makeStepJob(inSteps(commands)), commands.size());
    }
};

TEST_F(ConversionProgress, EachStageHasItsLabel)
{
    EXPECT_EQ(reportsOf({"progress 1 ReadAndProcess", "progress 2 Convert", "progress 3 ProcessStructure",
                         "progress 4 Merge", "progress 5 Stitch", "progress 6 FixSurfaceOrientation",
                         "progress 7 Tessellate", "progress 8 BuildOsgTree", "progress 9 Finalize", "progress 10 Write",
                         "progress 11 Finished", "progress 12 Unknown"}),
              texts({"1 Reading", "2 Converting", "3 Processing", "4 Merging", "5 Stitching",
                     "6 Unifying surface normals", "7 Tessellating", "8 Building scene tree", "9 Cleaning up",
                     "10 Writing file", "11 Finished conversion", "12 Unknown"}));
}

TEST_F(ConversionProgress, LabelsAreTranslated)
{
    const Reversing translator("PtxToOsg");
    const QStringList reports = reportsOf({"progress 5 Merge", "progress 6 NoSuchStage"});
    EXPECT_EQ(reports, texts({"5 gnigreM", "6 nwonknU"}));
}

TEST_F(ConversionProgress, AnotherStageWithTheSameValueIsNotReported)
{
    EXPECT_EQ(reportsOf({"progress 50 Tessellate", "progress 50 Write", "progress 51 Write"}),
              texts({"50 Tessellating", "51 Writing file"}));
}

TEST_F(ConversionProgress, AnUnknownStageIsReportedAsUnknown)
{
    EXPECT_EQ(reportsOf({"progress 60 NoSuchStage", "progress 61 tessellate"}), texts({"60 Unknown", "61 Unknown"}));
}

TEST_F(ConversionProgress, AMissingStageIsReportedAsUnknown)
{
    EXPECT_EQ(reportsOf({"progress 70"}), texts({"70 Unknown"}));
}

TEST_F(ConversionProgress, NegativeValuesAreNotReported)
{
    EXPECT_EQ(reportsOf({"progress -1 Merge", "progress -2147483648 Merge", "progress 8 Merge"}), texts({"8 Merging"}));
}

TEST_F(ConversionProgress, WhatIsNoNumberIsNotReported)
{
    EXPECT_EQ(reportsOf({"progress", "progress Merge 40", "progress-bytes fffe008000deadbeef0001020304050607",
                         "progress 9 Merge"}),
              texts({"9 Merging"}));
}

TEST_F(ConversionProgress, AGarbledStageIsReportedAsUnknown)
{
    EXPECT_EQ(reportsOf({"progress-bytes 313320fffe0080deadbeef0001020304050607"}), texts({"13 Unknown"}));
}

TEST_F(ConversionProgress, AFileThatTakesThePlaceOfTheWatchedOneIsFollowed)
{
    EXPECT_EQ(reportsOf({"progress-replaced 20 Merge", "progress-replaced 30 Write", "progress 40 Write",
                         "progress-replaced 50 Finalize"}),
              texts({"20 Merging", "30 Writing file", "40 Writing file", "50 Cleaning up"}));
}

TEST_F(ConversionProgress, ValuesThatGoBackwardsAreReported)
{
    EXPECT_EQ(reportsOf({"progress 80 Write", "progress 30 Merge", "progress 80 Write"}),
              texts({"80 Writing file", "30 Merging", "80 Writing file"}));
}

TEST_F(ConversionProgress, ValuesAreNotLimitedToAHundred)
{
    EXPECT_EQ(reportsOf({"progress 101 Merge", "progress 2147483647 Merge"}),
              texts({"101 Merging", "2147483647 Merging"}));
}

TEST_F(ConversionProgress, AValueThatIsTooLongForAnIntegerIsNotReported)
{
    EXPECT_EQ(reportsOf({"progress 2147483648 Merge", "progress 99999999999999999999 Merge", "progress 11 Merge"}),
              texts({"11 Merging"}));
}

TEST_F(ConversionProgress, AConverterThatTellsNothingCausesAtMostTheReportOfTheSeed)
{
    const auto job = makeStepJob("exit 0");
    QStringList reports;
    QObject::connect(job.get(), &znAbstractJob::progressChanged, [&](unsigned value, const QString& text) {
        reports << QStringLiteral("%1 %2").arg(value).arg(text);
    });
    ConversionLog(*job).run();
    EXPECT_TRUE(reports.isEmpty() || reports == texts({"0 Unknown"})) << reports.join(QLatin1Char(',')).toStdString();
}

TEST_F(ConversionProgress, TheProgressFileIsSeededBeforeTheConverterWrites)
{
    const auto job = makeStepJob(line("wait-for", QStringLiteral("go")));
    ConversionLog log(*job);
    QByteArray seed;
    QObject::connect(job.get(), &znAbstractJob::started, [&] {
        QFile file(job->getOutputFile() + QStringLiteral(".tmp"));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        seed = file.readAll();
        write(QStringLiteral("go"), "");
    });
    log.run();
    EXPECT_EQ(seed, QByteArray("0\nUnknown\n"));
}

TEST_F(ConversionProgress, BetweenTheRunsNothingIsFollowed)
{
    set("processes.most", QStringLiteral("2"));
    const auto job = makeStepJob("if-external-parts exit 5\noutput inlined");
    ConversionLog log(*job);
    QObject::connect(job.get(), &znAbstractJob::progressChanged, [&](unsigned, const QString& text) {
        if (!text.startsWith(QStringLiteral("No external")))
            return;
        QFile late(job->getOutputFile() + QStringLiteral(".tmp"));
        ASSERT_TRUE(late.open(QIODevice::WriteOnly));
        late.write("77\nMerge\n");
        late.close();
        QTest::qWait(100);
    });
    EXPECT_EQ(log.run(), texts({"starting", "started", "0 No external part files found. Retrying with inlined option.",
                                "starting", "started", "ready", "finished 0"}));
}

TEST_F(ConversionProgress, TheLastValueOfAFailedRunIsNotReportedAgainByTheRetry)
{
    QByteArray script = inSteps({"progress 50 Merge"}) + "if-external-parts exit 5\n";
    // The second launch passes the steps of the first one that lie behind it.
    script += inSteps({"progress 50 Write", "progress 51 Write"}, 1);
    set("processes.most", QStringLiteral("2"));
    const auto job = makeStepJob(script);
    ConversionLog log(*job);
    int starts = 0;
    QObject::connect(job.get(), &znAbstractJob::started, [&] { ++starts; });
    job->run();
    ASSERT_TRUE(waitUntil([&] { return starts == 1; }));
    step(0);
    ASSERT_TRUE(waitUntil([&] { return starts == 2; }));
    step(1);
    step(2);
    ASSERT_TRUE(waitUntil([&] { return log.ends == 1; }));
    EXPECT_EQ(log.lines(), texts({"starting", "started", "50 Merging",
                                  "0 No external part files found. Retrying with inlined option.", "starting",
                                  "started", "51 Writing file", "finished 0"}));
}

TEST_F(ConversionProgress, ChangesAfterTheEndAreNotReported)
{
    const auto job = makeStepJob("exit 7");
    ConversionLog log(*job);
    log.run();
    QFile file(job->getOutputFile() + QStringLiteral(".tmp"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("40 Merge\n");
    file.close();
    drainEvents();
    EXPECT_EQ(log.lines(), texts({"starting", "started", "finished 1"}));
}

TEST_F(ConversionProgress, AJobMayBeDeletedByWhoHearsOfItsProgressLater)
{
    auto* const job = makeStepJob(inSteps({"progress 10 Merge"}) + "wait 60000").release();
    bool deleted = false;
    QObject::connect(job, &QObject::destroyed, [&] { deleted = true; });
    QObject::connect(job, &znAbstractJob::started, [&] { write(QStringLiteral("go 0"), ""); });
    QObject::connect(job, &znAbstractJob::progressChanged, [&](unsigned value) {
        if (value == 10)
            job->deleteLater();
    });
    job->run();
    EXPECT_TRUE(waitUntil([&] { return deleted; }));
    EXPECT_EQ(outputs(), QStringList());
}

TEST_F(ConversionProgress, AJobMayEndAndBeDeletedInsideAReport)
{
    auto job = makeStepJob(inSteps({"progress 10 Merge", "progress 20 Merge"}));
    QList<unsigned> values;
    bool ended = false;
    QObject::connect(job.get(), &znAbstractJob::started, [&] { write(QStringLiteral("go 0"), ""); });
    QObject::connect(job.get(), &znAbstractJob::finished, [&] { ended = true; });
    QObject::connect(job.get(), &znAbstractJob::progressChanged, [&](unsigned value) {
        values << value;
        if (value != 10)
            return;
        write(QStringLiteral("go 1"), "");
        EXPECT_TRUE(waitUntil([&] { return ended; }));
        drainEvents();
        job.reset();
    });
    job->run();
    EXPECT_TRUE(waitUntil([&] { return !job; }));
    EXPECT_EQ(values.first(), 10U);
    EXPECT_EQ(outputs(), QStringList());
}

TEST_F(ConversionProgress, AnEndedJobKeepsNoNotificationInstance)
{
    const auto watchers = [] {
        const QDir descriptors(QStringLiteral("/proc/self/fd"));
        int count = 0;
        for (const QString& entry : descriptors.entryList(QDir::NoDotAndDotDot | QDir::AllEntries | QDir::System))
            count += QFileInfo(descriptors.filePath(entry)).symLinkTarget().endsWith(QStringLiteral("inotify"));
        return count;
    };
    const int before = watchers();
    const auto job = makeStepJob("");
    int during = 0;
    ConversionLog log(*job);
    QObject::connect(job.get(), &znAbstractJob::started, [&] { during = watchers(); });
    log.run();
    EXPECT_EQ(during, before + 1);
    EXPECT_EQ(watchers(), before);
    log.run();
    EXPECT_EQ(during, before + 1);
    EXPECT_EQ(watchers(), before);
}

} // namespace
