#include "tests/standalone/znJobProcessing/TestJobs.h"

#include <QElapsedTimer>
#include <QSignalSpy>

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <stdexcept>

using namespace znCADFileTypes;

TEST(AbstractTimerJob, RunAnnouncesTheStartAndWorksFromTheEventLoop)
{
    TimerJob job;
    SignalLog log;
    log.watch(job);
    job.run();
    EXPECT_EQ(log.lines, QStringList({QStringLiteral("starting")}));
    ASSERT_TRUE(waitUntil([&] { return log.lines.size() == 3; }));
    EXPECT_EQ(log.lines,
              QStringList({QStringLiteral("starting"), QStringLiteral("started"), QStringLiteral("finished 0")}));
}

/// The processor may rest longer, and never less.
TEST(AbstractTimerJob, TheIntervalIsInMicroseconds)
{
    const auto millisecondsOf = [](int interval) {
        FunctionJob<znAbstractTimerJob> job({}, interval, nullptr);
        QSignalSpy started(&job, &znAbstractJob::started);
        QElapsedTimer timer;
        timer.start();
        job.run();
        EXPECT_TRUE(waitUntil([&] { return !started.isEmpty(); }));
        return timer.elapsed();
    };
    qint64 least = 1000;
    for (int i = 0; i < 5; ++i)
        least = std::min(least, millisecondsOf(100));
    EXPECT_LT(least, 50);
    EXPECT_GE(millisecondsOf(80'000), 76) << "a timer of Qt may come 5 % early";
}

/// What the events of the start asked for is done before the work.
TEST(AbstractTimerJob, EventsThatWaitGoFirst)
{
    bool hasTurned = false;
    bool hadTurned = false;
    FunctionJob<znAbstractTimerJob> job(
        [&](auto& self) {
            hadTurned = hasTurned;
            self.end();
        },
        100, nullptr);
    QSignalSpy finished(&job, &znAbstractJob::finished);
    job.run();
    QMetaObject::invokeMethod(
        &job, [&] { hasTurned = true; }, Qt::QueuedConnection);
    ASSERT_TRUE(waitUntil([&] { return finished.size() == 1; }));
    EXPECT_TRUE(hadTurned);
}

TEST(AbstractTimerJob, SecondRunBeforeTheTimerIsRefused)
{
    TimerJob job;
    SignalLog log;
    log.watch(job);
    job.run();
    job.run();
    ASSERT_TRUE(waitUntil([&] { return log.lines.size() >= 3; }));
    drainEvents();
    EXPECT_EQ(log.lines.size(), 3);
}

TEST(AbstractTimerJob, AbortBeforeTheTimerEndsTheJobUnworked)
{
    bool worked = false;
    TimerJob job([&](auto& self) {
        worked = true;
        self.end();
    });
    QSignalSpy finished(&job, &znAbstractJob::finished);
    job.run();
    job.abort();
    ASSERT_EQ(finished.size(), 1);
    EXPECT_EQ(finished[0][0].value<JobState>(), JobFailed);
    EXPECT_EQ(job.getErrorText(), QStringLiteral("Aborted"));
    EXPECT_FALSE(finished.wait(50));
    EXPECT_FALSE(worked);
}

TEST(AbstractTimerJob, RunsAgainAfterAnAbort)
{
    TimerJob job;
    QSignalSpy finished(&job, &znAbstractJob::finished);
    job.run();
    job.abort();
    job.run();
    ASSERT_TRUE(waitUntil([&] { return finished.size() == 2; }));
    EXPECT_EQ(finished[1][0].value<JobState>(), JobSucceeded);
}

TEST(AbstractTimerJob, DestructionBeforeTheTimerTakesTheWorkBack)
{
    bool worked = false;
    auto job = std::make_unique<TimerJob>([&](auto&) { worked = true; });
    QSignalSpy finished(job.get(), &znAbstractJob::finished);
    job->run();
    job.reset();
    EXPECT_FALSE(finished.wait(50));
    EXPECT_FALSE(worked);
}

TEST(AbstractTimerJob, ExceptionEndsAtTheTimer)
{
    TimerJob job([](auto&) { throw std::runtime_error("broken"); });
    QSignalSpy finished(&job, &znAbstractJob::finished);
    job.run();
    ASSERT_TRUE(waitUntil([&] { return finished.size() == 1; }));
    EXPECT_EQ(finished[0][0].value<JobState>(), JobFailed);
    EXPECT_EQ(job.getErrorText(), QStringLiteral("broken"));
}

TEST(AbstractTimerJob, RunFromASlotOnStartingIsRefused)
{
    TimerJob job;
    SignalLog log;
    log.watch(job);
    QObject::connect(&job, &znAbstractJob::starting, &job, &znAbstractJob::run);
    job.run();
    ASSERT_TRUE(waitUntil([&] { return log.lines.size() >= 3; }));
    drainEvents();
    EXPECT_EQ(log.lines,
              QStringList({QStringLiteral("starting"), QStringLiteral("started"), QStringLiteral("finished 0")}));
}

TEST(AbstractTimerJob, AbortInASlotOnStartingEndsTheJobUnworked)
{
    bool worked = false;
    TimerJob job([&](auto& self) {
        worked = true;
        self.end();
    });
    SignalLog log;
    log.watch(job);
    QSignalSpy finished(&job, &znAbstractJob::finished);
    QObject::connect(&job, &znAbstractJob::starting, &job, &znAbstractJob::abort);
    job.run();
    EXPECT_EQ(log.lines, QStringList({QStringLiteral("starting"), QStringLiteral("finished 1")}));
    EXPECT_EQ(job.getErrorText(), QStringLiteral("Aborted"));
    EXPECT_FALSE(finished.wait(50));
    EXPECT_FALSE(worked);
}

TEST(AbstractTimerJob, RunAgainFromASlotOnFinishedIsNotLostByASecondAnnouncement)
{
    int works = 0;
    TimerJob job([&](auto& self) {
        if (++works == 1) {
            self.end(JobFailed);
        }
        self.end();
    });
    QSignalSpy finished(&job, &znAbstractJob::finished);
    QObject::connect(&job, &znAbstractJob::finished, &job, [&] {
        if (finished.size() == 1) {
            job.run();
        }
    });
    job.run();
    EXPECT_TRUE(waitUntil([&] { return works == 2; }));
}
