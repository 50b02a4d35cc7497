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
    EXPECT_EQ(job.getExitCode(), 0);
}

TEST_F(ProcessJobAbort, KillsAProcessThatIgnoresTheWishAndWhatItStarted)
{
    ScriptedJob job(QStringLiteral("ignore-stop;") +
                    folder.command(QStringLiteral("grandchild 60000"), QStringLiteral("pid")) + readyThenWait());
    QSignalSpy finished(&job, &znAbstractJob::finished);
    runUntilReady(job);
    job.abort();
    ASSERT_TRUE(waitUntil([&] { return finished.size() == 1; }));
    EXPECT_EQ(job.getExitCode(), 128 + SIGKILL);
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
    job.onFinish = [](ScriptedJob& self) { self.getExitCode() == 5 ? self.run() : self.endRun(); };
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

/// A job whose process asks for an update by exit code 4. Its finish() runs an update job, whose end either runs the
/// job again or ends it, as a converter with an update tool does.
class DependentJobs : public ProcessJobAbort
{
protected:
    void SetUp() override
    {
        outer = new ScriptedJob(QStringLiteral("exit 4"), &owner);
        log.watch(*outer);
        outer->onFinish = [this](ScriptedJob& self) { self.getExitCode() == 4 ? startUpdate() : self.endRun(); };
    }

    void startUpdate()
    {
        update = new ScriptedJob(updateScript);
        ScriptedJob* const job = update;
        QObject::connect(job, &znAbstractJob::finished, [this, job] {
            ++updateEnds;
            if (folder.has(QStringLiteral("updated"))) {
                outer->setScript(QStringLiteral("exit 0"));
                outer->run();
            } else {
                outer->endRunPlainly();
            }
            job->deleteLater();
        });
        job->run();
    }

    QStringList ends() const { return log.lines.filter(QStringLiteral("finished")); }

    QObject owner;
    SignalLog log;
    QPointer<ScriptedJob> outer;
    QPointer<ScriptedJob> update;
    QString updateScript = folder.command(QStringLiteral("write"), QStringLiteral("updated"));
    int updateEnds = 0;
};

TEST_F(DependentJobs, JobGoesOnAfterTheUpdate)
{
    outer->run();
    ASSERT_TRUE(waitUntil([&] { return !ends().isEmpty(); }));
    EXPECT_EQ(log.lines, QStringList({QStringLiteral("starting"), QStringLiteral("started"), QStringLiteral("starting"),
                                      QStringLiteral("started"), QStringLiteral("finished 0")}));
    EXPECT_TRUE(waitUntil([&] { return update.isNull(); }));
}

TEST_F(DependentJobs, JobEndsWithAFailedUpdate)
{
    updateScript = QStringLiteral("exit 3");
    outer->run();
    ASSERT_TRUE(waitUntil([&] { return !ends().isEmpty(); }));
    EXPECT_EQ(ends(), QStringList({QStringLiteral("finished 1")}));
    EXPECT_TRUE(outer->getErrorText().isEmpty());
}

TEST_F(DependentJobs, AbortOfTheOuterJobEndsTheUpdateFirst)
{
    updateScript += readyThenWait(); // the update has its result, and would run the job again
    runUntilReady(*outer);
    const qint64 child = update->processId();
    outer->abort();
    EXPECT_TRUE(ends().isEmpty());
    ASSERT_TRUE(waitUntil([&] { return !ends().isEmpty(); }));
    EXPECT_TRUE(hasEnded(child));
    EXPECT_EQ(updateEnds, 1);
    EXPECT_TRUE(waitUntil([&] { return update.isNull(); }));
    drainEvents();
    EXPECT_EQ(log.lines,
              QStringList({QStringLiteral("starting"), QStringLiteral("started"), QStringLiteral("finished 1")}));
}

TEST_F(DependentJobs, DestructionOfTheOuterJobEndsAndDeletesTheUpdateSilently)
{
    updateScript += readyThenWait();
    runUntilReady(*outer);
    const qint64 child = update->processId();
    delete outer;
    EXPECT_TRUE(hasEnded(child));
    EXPECT_TRUE(update.isNull());
    drainEvents();
    EXPECT_EQ(updateEnds, 0);
    EXPECT_TRUE(ends().isEmpty());
}

TEST_F(DependentJobs, JobThatEndsBesideItsUpdateEndsAgainAfterIt)
{
    updateScript = folder.command(QStringLiteral("wait-for"), QStringLiteral("go")) + QStringLiteral(";exit 3");
    outer->onFinish = [this](ScriptedJob& self) {
        startUpdate();
        self.endRunPlainly();
    };
    outer->run();
    ASSERT_TRUE(waitUntil([&] { return !ends().isEmpty(); }));
    folder.write(QStringLiteral("go"));
    EXPECT_TRUE(waitUntil([&] { return ends().size() == 2; }));
    EXPECT_TRUE(waitUntil([&] { return update.isNull(); }));
}

TEST_F(DependentJobs, DeletingQueueTakesTheUpdateOfAnEndedJobAlong)
{
    updateScript = readyThenWait();
    outer->onFinish = [this](ScriptedJob& self) {
        startUpdate();
        self.endRunPlainly();
    };
    znJobQueue queue;
    QSignalSpy empty(&queue, &znJobQueue::jobQueueEmpty);
    queue.setDeleteFinishedOrFailedJobs(true);
    queue.addJob(outer);
    queue.startProcessing();
    EXPECT_TRUE(waitUntil([&] { return outer.isNull() && update.isNull() && !empty.isEmpty(); }));
    drainEvents();
    EXPECT_EQ(ends().size(), 1);
    EXPECT_EQ(updateEnds, 0);
    EXPECT_EQ(empty.size(), 1);
}

TEST_F(DependentJobs, DestructionOfTheOuterJobInASlotOnTheUpdatesStarting)
{
    outer->onFinish = [this](ScriptedJob& self) {
        update = new ScriptedJob(QStringLiteral("wait 60000"));
        QObject::connect(update, &znAbstractJob::starting, [&self] { delete &self; });
        QObject::connect(update, &znAbstractJob::finished, [this] { ++updateEnds; });
        update->run();
    };
    outer->run();
    EXPECT_TRUE(waitUntil([&] { return outer.isNull() && update.isNull(); }));
    EXPECT_EQ(updateEnds, 0);
}

TEST_F(DependentJobs, UpdateOfAnAbortedJobIsNotLaunched)
{
    outer->setScript(QStringLiteral("exit-on-stop 4") + readyThenWait());
    updateScript = folder.command(QStringLiteral("write"), QStringLiteral("update ran"));
    runUntilReady(*outer);
    outer->abort();
    ASSERT_TRUE(waitUntil([&] { return !ends().isEmpty(); }));
    EXPECT_EQ(ends(), QStringList({QStringLiteral("finished 1")}));
    EXPECT_EQ(updateEnds, 1);
    EXPECT_FALSE(folder.has(QStringLiteral("update ran")));
}

TEST_F(DependentJobs, JobRunFromASlotOnFinishedStandsAlone)
{
    auto first = std::make_unique<ScriptedJob>(QStringLiteral("exit 0"));
    ScriptedJob next(readyThenWait());
    QSignalSpy nextEnds(&next, &znAbstractJob::finished);
    QObject::connect(first.get(), &znAbstractJob::finished, [&] { next.run(); });
    runUntilReady(*first);
    first->abort();
    first.reset();
    EXPECT_FALSE(hasEnded(next.processId()));
    EXPECT_EQ(next.getState(), JobRunning);
    next.abort();
    EXPECT_TRUE(waitUntil([&] { return nextEnds.size() == 1; }));
}

TEST_F(DependentJobs, DependencyEndsWithTheRun)
{
    auto helper = std::make_unique<ScriptedJob>(QStringLiteral("exit 0"));
    outer->onFinish = [&](ScriptedJob& self) {
        self.onFinish = {};
        QObject::connect(helper.get(), &znAbstractJob::finished, &self, [&self] { self.endRunPlainly(); });
        helper->run();
    };
    outer->run();
    ASSERT_TRUE(waitUntil([&] { return !ends().isEmpty(); }));
    helper->setScript(readyThenWait());
    helper->disconnect();
    runUntilReady(*helper);
    delete outer;
    EXPECT_FALSE(hasEnded(helper->processId()));
    EXPECT_EQ(helper->getState(), JobRunning);
}
