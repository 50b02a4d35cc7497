#include "tests/standalone/znJobProcessing/TestJobs.h"

#include <QEventLoop>
#include <QPointer>
#include <QSignalSpy>
#include <QTimer>

#include <gtest/gtest.h>

#include <memory>
#include <new>
#include <stdexcept>

using namespace znCADFileTypes;

TEST(AbstractProcessingJob, JobThatNeverRanIsWaitingWithoutErrorText)
{
    const DirectJob job;
    EXPECT_EQ(job.getState(), 2);
    EXPECT_TRUE(job.getErrorText().isEmpty());
    EXPECT_FALSE(job.isMechanorJob());
}

TEST(AbstractProcessingJob, SignalsComeInOrderBeforeRunReturns)
{
    DirectJob job([](auto& self) {
        Q_EMIT self.progressChanged(40, QStringLiteral("Reading"));
        self.end(JobPartial);
    });
    SignalLog log;
    log.watch(job);
    QSignalSpy progress(&job, &znAbstractJob::progressChanged);
    job.run();
    EXPECT_EQ(log.lines,
              QStringList({QStringLiteral("starting"), QStringLiteral("started"), QStringLiteral("finished 3")}));
    ASSERT_EQ(progress.size(), 1);
    EXPECT_EQ(progress[0][0].toUInt(), 40u);
    EXPECT_EQ(job.getState(), JobPartial);
}

TEST(AbstractProcessingJob, StateTravelsThroughQueuedConnections)
{
    DirectJob job([](auto& self) { self.end(JobPartial); });
    QObject receiver;
    int received = -1;
    QObject::connect(
        &job, &znAbstractJob::finished, &receiver, [&](JobState state) { received = state; }, Qt::QueuedConnection);
    QSignalSpy spy(&job, SIGNAL(finished(znCADFileTypes::JobState)));
    job.run();
    EXPECT_EQ(received, -1);
    EXPECT_TRUE(waitUntil([&] { return received >= 0; }));
    EXPECT_EQ(received, 3);
    ASSERT_EQ(spy.size(), 1);
    EXPECT_EQ(spy[0][0].value<JobState>(), JobPartial);
}

TEST(AbstractProcessingJob, RunsAgainAfterAnEnd)
{
    int runs = 0;
    DirectJob job([&](auto& self) { self.end(++runs == 1 ? JobFailed : JobSucceeded); });
    SignalLog log;
    log.watch(job);
    job.run();
    job.run();
    EXPECT_EQ(log.lines,
              QStringList({QStringLiteral("starting"), QStringLiteral("started"), QStringLiteral("finished 1"),
                           QStringLiteral("starting"), QStringLiteral("started"), QStringLiteral("finished 0")}));
}

TEST(AbstractProcessingJob, RunInsideFinishGoesOnWithTheSameRun)
{
    int runs = 0;
    DirectJob job([&](auto& self) { self.end(++runs == 1 ? JobFailed : JobSucceeded); });
    job.onFinish = [](auto& self) { self.getState() == JobFailed ? self.run() : self.endRun(); };
    SignalLog log;
    log.watch(job);
    job.run();
    EXPECT_EQ(log.lines, QStringList({QStringLiteral("starting"), QStringLiteral("started"), QStringLiteral("starting"),
                                      QStringLiteral("started"), QStringLiteral("finished 0")}));
}

TEST(AbstractProcessingJob, RunWhileTheWorkGoesOnIsRefused)
{
    DirectJob job([](auto& self) {
        self.run();
        self.end();
    });
    SignalLog log;
    log.watch(job);
    job.run();
    EXPECT_EQ(log.lines,
              QStringList({QStringLiteral("starting"), QStringLiteral("started"), QStringLiteral("finished 0")}));
}

TEST(AbstractProcessingJob, TwoAnnouncementsAreHeardTwice)
{
    DirectJob job([](auto& self) {
        self.end(JobFailed);
        Q_EMIT self.processingFinished();
    });
    QSignalSpy finished(&job, &znAbstractJob::finished);
    job.run();
    EXPECT_EQ(finished.size(), 2);
}

TEST(AbstractProcessingJob, ExceptionEndsTheRunAsFailedWithItsText)
{
    DirectJob job([](auto& self) {
        self.setState(JobRunning);
        throw std::runtime_error("No node with Id: 17 \xc3\xbc");
    });
    QSignalSpy finished(&job, &znAbstractJob::finished);
    job.run();
    ASSERT_EQ(finished.size(), 1);
    EXPECT_EQ(finished[0][0].value<JobState>(), JobFailed);
    EXPECT_EQ(job.getErrorText(), QString::fromUtf8("No node with Id: 17 \xc3\xbc"));
}

TEST(AbstractProcessingJob, WantOfMemoryEndsTheRunWithASentence)
{
    DirectJob job([](auto&) { throw std::bad_alloc(); });
    QSignalSpy finished(&job, &znAbstractJob::finished);
    job.run();
    ASSERT_EQ(finished.size(), 1);
    EXPECT_EQ(finished[0][0].value<JobState>(), JobFailed);
    EXPECT_EQ(job.getErrorText(), QStringLiteral("There is not enough memory"));
}

TEST(AbstractProcessingJob, ForeignExceptionEndsTheRunAsFailed)
{
    DirectJob job([](auto&) { throw 42; });
    QSignalSpy finished(&job, &znAbstractJob::finished);
    job.run();
    ASSERT_EQ(finished.size(), 1);
    EXPECT_EQ(finished[0][0].value<JobState>(), JobFailed);
    EXPECT_EQ(job.getErrorText(), QStringLiteral("Unknown exception"));
}

namespace
{

struct AnnounceAtExit {
    DirectJob::FunctionJob& job;
    ~AnnounceAtExit() { Q_EMIT job.processingFinished(); }
};

} // namespace

TEST(AbstractProcessingJob, AnnouncementDuringUnwindingKeepsTheStateOfThatMoment)
{
    DirectJob job([](auto& self) {
        self.setState(JobRunning);
        const AnnounceAtExit guard{self};
        throw std::runtime_error("lost half way");
    });
    QSignalSpy finished(&job, &znAbstractJob::finished);
    job.run();
    ASSERT_EQ(finished.size(), 1);
    EXPECT_EQ(finished[0][0].value<JobState>(), JobRunning);
    EXPECT_EQ(job.getState(), JobRunning);
    EXPECT_EQ(job.getErrorText(), QStringLiteral("lost half way"));
}

TEST(AbstractProcessingJob, ExceptionInARepeatedRunEndsThatRunOnce)
{
    int runs = 0;
    DirectJob job([&](auto& self) {
        if (++runs == 2) {
            throw std::runtime_error("second");
        }
        self.end();
    });
    QSignalSpy finished(&job, &znAbstractJob::finished);
    job.run();
    job.run();
    ASSERT_EQ(finished.size(), 2);
    EXPECT_EQ(finished[0][0].value<JobState>(), JobSucceeded);
    EXPECT_EQ(finished[1][0].value<JobState>(), JobFailed);
}

TEST(AbstractProcessingJob, FinishAfterAnExceptionMayRunAgain)
{
    int runs = 0;
    DirectJob job([&](auto& self) {
        if (++runs == 1) {
            throw std::runtime_error("first");
        }
        self.end();
    });
    job.onFinish = [](auto& self) { self.getState() == JobFailed ? self.run() : self.endRun(); };
    QSignalSpy finished(&job, &znAbstractJob::finished);
    job.run();
    ASSERT_EQ(finished.size(), 1);
    EXPECT_EQ(finished[0][0].value<JobState>(), JobSucceeded);
}

TEST(AbstractProcessingJob, AbortLeavesARunningJobAlone)
{
    DirectJob job([](auto& self) {
        self.abort();
        self.end();
    });
    QSignalSpy finished(&job, &znAbstractJob::finished);
    job.run();
    ASSERT_EQ(finished.size(), 1);
    EXPECT_EQ(finished[0][0].value<JobState>(), JobSucceeded);
}

TEST(AbstractProcessingJob, AbortOfAJobThatNeitherWaitsNorRunsIsIgnored)
{
    DirectJob job;
    QSignalSpy finished(&job, &znAbstractJob::finished);
    job.abort();
    EXPECT_EQ(finished.size(), 0);
    EXPECT_EQ(job.getState(), JobWaiting);
}

TEST(AbstractProcessingJob, SurvivesANestedEventLoopInItsWork)
{
    DirectJob inner;
    DirectJob outer([&](auto& self) {
        QEventLoop loop;
        QObject::connect(&inner, &znAbstractJob::finished, &loop, &QEventLoop::quit);
        QTimer::singleShot(0, &inner, [&] { inner.run(); });
        loop.exec();
        self.end();
    });
    SignalLog log;
    log.watch(outer, QStringLiteral("outer "));
    log.watch(inner, QStringLiteral("inner "));
    outer.run();
    EXPECT_EQ(log.lines, QStringList({QStringLiteral("outer starting"), QStringLiteral("outer started"),
                                      QStringLiteral("inner starting"), QStringLiteral("inner started"),
                                      QStringLiteral("inner finished 0"), QStringLiteral("outer finished 0")}));
}

TEST(AbstractProcessingJob, MayBeDestroyedInANestedLoopOfItsWork)
{
    auto* const job = new DirectJob([](auto& self) { delete &self; });
    QSignalSpy finished(job, &znAbstractJob::finished);
    const QPointer<DirectJob> guard(job);
    job->run();
    EXPECT_TRUE(guard.isNull());
    EXPECT_EQ(finished.size(), 0);
}

TEST(AbstractProcessingJob, MayBeDestroyedByASlotOnStarting)
{
    bool worked = false;
    auto* const job = new DirectJob([&](auto&) { worked = true; });
    QObject::connect(job, &znAbstractJob::starting, [job] { delete job; });
    job->run();
    EXPECT_FALSE(worked);
}

TEST(AbstractProcessingJob, RunFromASlotOnStartingIsRefused)
{
    int works = 0;
    DirectJob job([&](auto& self) {
        ++works;
        self.end();
    });
    QSignalSpy starting(&job, &znAbstractJob::starting);
    QSignalSpy finished(&job, &znAbstractJob::finished);
    QObject::connect(&job, &znAbstractJob::starting, &job, &znAbstractJob::run);
    job.run();
    EXPECT_EQ(works, 1);
    EXPECT_EQ(starting.size(), 1);
    EXPECT_EQ(finished.size(), 1);
}

TEST(AbstractProcessingJob, AbortInASlotOnStartingTakesTheWorkBack)
{
    bool worked = false;
    DirectJob job([&](auto&) { worked = true; });
    SignalLog log;
    log.watch(job);
    QObject::connect(&job, &znAbstractJob::starting, &job, &znAbstractJob::abort);
    job.run();
    EXPECT_EQ(log.lines, QStringList({QStringLiteral("starting"), QStringLiteral("finished 1")}));
    EXPECT_EQ(job.getErrorText(), QStringLiteral("Aborted"));
    EXPECT_FALSE(worked);
}

TEST(AbstractProcessingJob, AnAbortCountsForOneRun)
{
    DirectJob job;
    SignalLog log;
    log.watch(job);
    const auto abort = QObject::connect(&job, &znAbstractJob::starting, &job, &znAbstractJob::abort);
    job.run();
    QObject::disconnect(abort);
    job.run();
    EXPECT_EQ(log.lines,
              QStringList({QStringLiteral("starting"), QStringLiteral("finished 1"), QStringLiteral("starting"),
                           QStringLiteral("started"), QStringLiteral("finished 0")}));
}

TEST(AbstractProcessingJob, FinishMayLeaveTheEndToASlot)
{
    DirectJob job;
    QSignalSpy finished(&job, &znAbstractJob::finished);
    job.onFinish = [](auto&) {};
    job.run();
    EXPECT_EQ(finished.size(), 0);
    job.endRun();
    ASSERT_EQ(finished.size(), 1);
    EXPECT_EQ(finished[0][0].value<JobState>(), JobSucceeded);
    job.onFinish = {};
    job.run();
    EXPECT_EQ(finished.size(), 2);
}

TEST(AbstractProcessingJob, RunInALoopInsideTheWorkIsRefusedUntilItsEndIsAnnounced)
{
    int works = 0;
    DirectJob job([&](auto& self) {
        if (++works == 1) {
            QTimer::singleShot(0, &self, [&self] { self.run(); });
            drainEvents();
        }
        self.end();
    });
    QSignalSpy finished(&job, &znAbstractJob::finished);
    job.run();
    EXPECT_EQ(works, 1);
    EXPECT_EQ(finished.size(), 1);
}
