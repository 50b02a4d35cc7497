#include "host/znJobProcessing/znJobQueue.h"
#include "tests/standalone/znJobProcessing/ProcessTestJobs.h"

#include <QPointer>
#include <QSignalSpy>

#include <gtest/gtest.h>

#include <memory>

using namespace znCADFileTypes;

class ProcessJobAbort : public ::testing::Test
{
protected:
    /// Runs `job` until its script has written the file "ready".
    void runUntilReady(znAbstractJob& job)
    {
        job.run();
        ASSERT_TRUE(waitUntil([&] { return folder.has(QStringLiteral("ready")); }));
    }

    QString readyThenWait() const
    {
        return folder.command(QStringLiteral(";write"), QStringLiteral("ready")) + QStringLiteral(";wait 60000");
    }

    TestFolder folder;
};

TEST_F(ProcessJobAbort, AsksTheProcessToStop)
{
    ScriptedJob job(QStringLiteral("exit-on-stop 21") + readyThenWait());
    QSignalSpy finished(&job, &znAbstractJob::finished);
    runUntilReady(job);
    job.abort();
    EXPECT_EQ(finished.size(), 0);
    ASSERT_TRUE(waitUntil([&] { return finished.size() == 1; }));
    EXPECT_EQ(finished[0][0].value<JobState>(), JobFailed);
    EXPECT_EQ(job.getExitCode(), 21);
    EXPECT_EQ(job.getErrorText(), QStringLiteral("Aborted"));
}

TEST_F(ProcessJobAbort, AbortedJobFailsThoughItsProcessEndsWell)
{
    ScriptedJob job(QStringLiteral("exit-on-stop 0") + readyThenWait());
    QSignalSpy finished(&job, &znAbstractJob::finished);
    runUntilReady(job);
    job.abort();
    job.abort();
    ASSERT_TRUE(waitUntil([&] { return finished.size() == 1; }));
    EXPECT_EQ(finished[0][0].value<JobState>(), JobFailed);
    EXPECT_EQ(job.getExitCode(), 21);
}

TEST_F(ProcessJobAbort, KillsAProcessThatIgnoresTheWishAndWhatItStarted)
{
    ScriptedJob job(QStringLiteral("ignore-stop;") +
                    folder.command(QStringLiteral("grandchild 60000"), QStringLiteral("pid")) + readyThenWait());
    QSignalSpy finished(&job, &znAbstractJob::finished);
    runUntilReady(job);
    job.abort();
    ASSERT_TRUE(waitUntil([&] { return finished.size() == 1; }));
    EXPECT_EQ(job.getExitCode(), 21);
    EXPECT_TRUE(waitUntil([&] { return hasEnded(folder.read(QStringLiteral("pid")).toLongLong()); }));
}

TEST_F(ProcessJobAbort, ReachesAProcessThatIsJustBeingLaunched)
{
    ScriptedJob job(QStringLiteral("wait 60000"));
    SignalLog log;
    log.watch(job);
    job.run();
    job.abort();
    ASSERT_TRUE(waitUntil([&] { return log.lines.size() == 3; }));
    EXPECT_EQ(log.lines,
              QStringList({QStringLiteral("starting"), QStringLiteral("started"), QStringLiteral("finished 1")}));
}

TEST_F(ProcessJobAbort, InASlotOnStartingTakesTheLaunchBack)
{
    ScriptedJob job(folder.command(QStringLiteral("write"), QStringLiteral("trace")));
    SignalLog log;
    log.watch(job);
    QObject::connect(&job, &znAbstractJob::starting, &job, &znAbstractJob::abort);
    job.run();
    EXPECT_EQ(log.lines, QStringList({QStringLiteral("starting")}));
    ASSERT_TRUE(waitUntil([&] { return log.lines.size() == 2; }));
    drainEvents();
    EXPECT_EQ(log.lines.last(), QStringLiteral("finished 1"));
    EXPECT_EQ(job.getErrorText(), QStringLiteral("Aborted"));
    EXPECT_FALSE(folder.has(QStringLiteral("trace")));
    EXPECT_EQ(job.getExitCode(), 21);
}

TEST_F(ProcessJobAbort, OfAFailedStartChangesNothing)
{
    ScriptedJob job(QString{});
    job.setCommand(QString());
    QSignalSpy finished(&job, &znAbstractJob::finished);
    job.run();
    job.abort();
    ASSERT_TRUE(waitUntil([&] { return finished.size() == 1; }));
    drainEvents();
    EXPECT_EQ(finished.size(), 1);
}

TEST_F(ProcessJobAbort, AbortedJobDoesNotRunAgainInsideFinish)
{
    ScriptedJob job(QStringLiteral("exit-on-stop 5") + readyThenWait());
    SignalLog log;
    log.watch(job);
    int launches = 0;
    QObject::connect(&job, &znAbstractJob::starting, [&] { ++launches; });
    job.onFinish = [](ScriptedJob& self) { self.run(); };
    runUntilReady(job);
    job.abort();
    ASSERT_TRUE(waitUntil([&] { return log.lines.last() == QStringLiteral("finished 1"); }));
    drainEvents();
    EXPECT_EQ(launches, 1);
    EXPECT_EQ(log.lines.filter(QStringLiteral("finished")).size(), 1);
}

TEST_F(ProcessJobAbort, BetweenTwoProcessesOfARunTakesTheSecondBack)
{
    ScriptedJob job(QStringLiteral("exit 5"));
    SignalLog log;
    log.watch(job);
    job.onFinish = [](ScriptedJob& self) {
        Q_EMIT self.progressChanged(0, QStringLiteral("Retrying"));
        self.run();
    };
    QObject::connect(&job, &znAbstractJob::progressChanged, &job, &znAbstractJob::abort);
    job.run();
    ASSERT_TRUE(waitUntil([&] { return log.lines.size() == 3; }));
    drainEvents();
    EXPECT_EQ(log.lines,
              QStringList({QStringLiteral("starting"), QStringLiteral("started"), QStringLiteral("finished 1")}));
}

TEST_F(ProcessJobAbort, AbortedJobMayRunAgainLater)
{
    ScriptedJob job(QStringLiteral("wait 60000"));
    QSignalSpy finished(&job, &znAbstractJob::finished);
    job.run();
    job.abort();
    ASSERT_TRUE(waitUntil([&] { return finished.size() == 1; }));
    job.setScript(QStringLiteral("exit 0"));
    job.run();
    ASSERT_TRUE(waitUntil([&] { return finished.size() == 2; }));
    EXPECT_EQ(finished[1][0].value<JobState>(), JobSucceeded);
}

TEST_F(ProcessJobAbort, TellsTheExitCodeOfTheRunThatWasAbortedAndOfNoOther)
{
    ScriptedJob job(QStringLiteral("exit-on-stop 255") + readyThenWait());
    QSignalSpy finished(&job, &znAbstractJob::finished);
    runUntilReady(job);
    job.abort();
    EXPECT_FALSE(job.getExitCode().has_value());
    ASSERT_TRUE(waitUntil([&] { return finished.size() == 1; }));
    EXPECT_EQ(job.getExitCode(), 21);
    job.setScript(QStringLiteral("exit 6"));
    job.run();
    ASSERT_TRUE(waitUntil([&] { return finished.size() == 2; }));
    EXPECT_EQ(job.getExitCode(), 6);
}

TEST_F(ProcessJobAbort, FromInsideFinishFailsARunWhoseProcessEndedWell)
{
    ScriptedJob job(QStringLiteral("exit 0"));
    QSignalSpy finished(&job, &znAbstractJob::finished);
    job.onFinish = [](ScriptedJob& self) {
        EXPECT_EQ(self.getState(), JobSucceeded);
        self.abort();
        self.endRunPlainly();
    };
    job.run();
    ASSERT_TRUE(waitUntil([&] { return finished.size() == 1; }));
    EXPECT_EQ(finished[0][0].value<JobState>(), JobFailed);
}

TEST_F(ProcessJobAbort, OfAnEndedJobChangesNothing)
{
    ScriptedJob job(QStringLiteral("exit 0"));
    QSignalSpy finished(&job, &znAbstractJob::finished);
    QObject::connect(&job, &znAbstractJob::finished, &job, &znAbstractJob::abort);
    job.run();
    ASSERT_TRUE(waitUntil([&] { return finished.size() == 1; }));
    drainEvents();
    EXPECT_EQ(finished.size(), 1);
    EXPECT_EQ(job.getState(), JobSucceeded);
    EXPECT_EQ(job.getExitCode(), 0);
}

TEST_F(ProcessJobAbort, OfAllJobsInASlotOnStartingTakesTheLaunchBack)
{
    ScriptedJob job(folder.command(QStringLiteral("write"), QStringLiteral("trace")));
    znJobQueue queue;
    QSignalSpy empty(&queue, &znJobQueue::jobQueueEmpty);
    QObject::connect(&job, &znAbstractJob::starting, &queue, &znJobQueue::abortAllJobs);
    queue.addJob(&job);
    queue.startProcessing();
    ASSERT_TRUE(waitUntil([&] { return !empty.isEmpty(); }));
    EXPECT_EQ(job.getState(), JobFailed);
    EXPECT_FALSE(folder.has(QStringLiteral("trace")));
}
