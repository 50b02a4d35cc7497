#include "host/znJobProcessing/znJobQueue.h"
#include "tests/standalone/znJobProcessing/ProcessTestJobs.h"

#include <QEventLoop>
#include <QPointer>
#include <QSignalSpy>
#include <QTimer>

#include <gtest/gtest.h>

#include <memory>

using namespace znCADFileTypes;

/// A job whose process asks for an update by exit code 4. Its finish() runs an update job, whose end either runs the
/// job again or ends it, as a converter with an update tool does.
class DependentJobs : public ::testing::Test
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
        job->workFor(*outer);
        job->run();
    }

    /// Runs `job` until a script has written the file "ready".
    void runUntilReady(znAbstractJob& job)
    {
        job.run();
        ASSERT_TRUE(waitUntil([&] { return folder.has(QStringLiteral("ready")); }));
    }

    QString readyThenWait() const
    {
        return folder.command(QStringLiteral(";write"), QStringLiteral("ready")) + QStringLiteral(";wait 60000");
    }

    QStringList ends() const { return log.lines.filter(QStringLiteral("finished")); }

    TestFolder folder;
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
        update->workFor(self);
        update->run();
    };
    outer->run();
    EXPECT_TRUE(waitUntil([&] { return outer.isNull() && update.isNull(); }));
    EXPECT_EQ(updateEnds, 0);
}

TEST_F(DependentJobs, UpdateOfAnAbortedJobIsNotLaunched)
{
    outer->setScript(QStringLiteral("exit-on-stop 4") + readyThenWait());
    outer->onFinish = [this](ScriptedJob&) { startUpdate(); };
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
        helper->workFor(self);
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

TEST_F(DependentJobs, AbortOfAJobWhoseUpdateTurnsOutWellRunsNothingMore)
{
    outer->onFinish = [this](ScriptedJob& self) {
        if (self.getExitCode() != 4) {
            return self.endRun();
        }
        self.abort(); // as a slot on a progress text may do
        startUpdate();
    };
    folder.write(QStringLiteral("updated")); // by a run of an earlier time
    QSignalSpy started(outer, &znAbstractJob::started);
    outer->run();
    ASSERT_TRUE(waitUntil([&] { return !ends().isEmpty(); }));
    EXPECT_TRUE(waitUntil([&] { return update.isNull(); }));
    drainEvents();
    EXPECT_EQ(updateEnds, 1);
    EXPECT_EQ(started.size(), 1);
    EXPECT_EQ(ends(), QStringList({QStringLiteral("finished 1")}));
    EXPECT_EQ(outer->getExitCode(), 21);
}

TEST_F(DependentJobs, AbortOfAJobThatEndedBesideItsUpdateReachesTheUpdate)
{
    updateScript += readyThenWait();
    outer->onFinish = [this](ScriptedJob& self) {
        startUpdate();
        self.endRunPlainly();
    };
    runUntilReady(*outer);
    ASSERT_EQ(ends().size(), 1);
    outer->abort();
    ASSERT_TRUE(waitUntil([&] { return ends().size() == 2; }));
    EXPECT_TRUE(waitUntil([&] { return update.isNull(); }));
    drainEvents();
    EXPECT_EQ(updateEnds, 1);
    EXPECT_EQ(ends().last(), QStringLiteral("finished 1"));
    EXPECT_EQ(log.lines.filter(QStringLiteral("starting")).size(), 1);
}

TEST_F(DependentJobs, RunIsRefusedWhileTheUpdateWorks)
{
    updateScript = folder.command(QStringLiteral("write"), QStringLiteral("ready")) + QLatin1Char(';') +
                   folder.command(QStringLiteral("wait-for"), QStringLiteral("go")) + QLatin1Char(';') + updateScript;
    runUntilReady(*outer);
    outer->run();
    drainEvents();
    EXPECT_EQ(log.lines, QStringList({QStringLiteral("starting"), QStringLiteral("started")}));
    folder.write(QStringLiteral("go"));
    ASSERT_TRUE(waitUntil([&] { return !ends().isEmpty(); }));
    EXPECT_EQ(log.lines, QStringList({QStringLiteral("starting"), QStringLiteral("started"), QStringLiteral("starting"),
                                      QStringLiteral("started"), QStringLiteral("finished 0")}));
}

TEST_F(DependentJobs, RunIsTakenAgainAfterAnUpdateThatLedToNothing)
{
    outer->onFinish = [this](ScriptedJob& self) {
        update = new ScriptedJob(QStringLiteral("exit 3"));
        QObject::connect(update, &znAbstractJob::finished, update, &QObject::deleteLater);
        update->workFor(self);
        update->run();
        self.endRunPlainly();
    };
    outer->run();
    ASSERT_TRUE(waitUntil([&] { return !ends().isEmpty() && update.isNull(); }));
    outer->onFinish = {};
    outer->setScript(QStringLiteral("exit 0"));
    outer->run();
    EXPECT_TRUE(waitUntil([&] { return ends().size() == 2; }));
    EXPECT_EQ(ends().last(), QStringLiteral("finished 0"));
}

TEST_F(DependentJobs, JobRunInsideFinishWithoutACallStandsAlone)
{
    ScriptedJob other(QStringLiteral("exit 0"));
    SignalLog others;
    others.watch(other);
    outer->onFinish = [&](ScriptedJob& self) {
        other.run(); // as a slot on a signal of the job may do
        self.abort();
        self.endRunPlainly();
    };
    znJobQueue queue;
    queue.setDeleteFinishedOrFailedJobs(true);
    queue.addJob(outer);
    queue.startProcessing();
    EXPECT_TRUE(waitUntil([&] { return outer.isNull() && others.lines.size() == 3; }));
    EXPECT_EQ(others.lines,
              QStringList({QStringLiteral("starting"), QStringLiteral("started"), QStringLiteral("finished 0")}));
}

TEST_F(DependentJobs, QueuedJobsThatBeginInALoopInsideFinishStandAlone)
{
    ScriptedJob other(readyThenWait());
    QSignalSpy otherEnds(&other, &znAbstractJob::finished);
    znJobQueue queue;
    queue.addJob(&other);
    outer->onFinish = [&](ScriptedJob& self) {
        self.onFinish = {};
        queue.startProcessing();
        waitUntil([&] { return folder.has(QStringLiteral("ready")); }); // as a message box does
        self.run();
    };
    runUntilReady(*outer);
    delete outer;
    EXPECT_FALSE(hasEnded(other.processId()));
    EXPECT_EQ(other.getState(), JobRunning);
    EXPECT_TRUE(otherEnds.isEmpty());
    other.abort();
    EXPECT_TRUE(waitUntil([&] { return otherEnds.size() == 1; }));
}

TEST_F(DependentJobs, AnIdleWorkerIsLeftAloneWhenTheOtherGoes)
{
    ScriptedJob helper(QStringLiteral("exit 0"));
    helper.workFor(*outer);
    delete outer;
    QSignalSpy finished(&helper, &znAbstractJob::finished);
    helper.run();
    ASSERT_TRUE(waitUntil([&] { return finished.size() == 1; }));
    EXPECT_EQ(helper.getState(), JobSucceeded);
}

TEST_F(DependentJobs, TwoJobsNeverWorkForEachOther)
{
    ScriptedJob helper(QStringLiteral("wait 60000"));
    helper.workFor(helper);
    helper.workFor(*outer);
    outer->workFor(helper); // refused: it would wait for itself
    QSignalSpy finished(&helper, &znAbstractJob::finished);
    helper.run();
    outer->abort();
    ASSERT_TRUE(waitUntil([&] { return finished.size() == 1; }));
    EXPECT_EQ(helper.getState(), JobFailed);
}
