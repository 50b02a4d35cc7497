#include "tests/standalone/znJobProcessing/JobQueueFixture.h"

#include <QPointer>

#include <algorithm>

using namespace znCADFileTypes;

TEST_F(JobQueue, RunsJobsInTheOrderAdded)
{
    const QStringList names{QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")};
    for (const QString& name : names) {
        add(name);
    }
    queue.startProcessing();
    ASSERT_TRUE(waitForEmptiness());
    EXPECT_EQ(log.lines, endsOf(names));
}

TEST_F(JobQueue, StartsNothingBeforeStartProcessingAndNothingInsideIt)
{
    add(QStringLiteral("a"));
    drainEvents();
    EXPECT_TRUE(log.lines.isEmpty());
    queue.startProcessing();
    EXPECT_TRUE(log.lines.isEmpty());
    EXPECT_TRUE(waitForEmptiness());
    EXPECT_EQ(log.lines, endsOf({QStringLiteral("a")}));
}

TEST_F(JobQueue, StartsJobsThatAreAddedToAStartedQueue)
{
    queue.startProcessing();
    drainEvents();
    add(QStringLiteral("a"));
    EXPECT_TRUE(log.lines.isEmpty());
    ASSERT_TRUE(waitForEmptiness());
    EXPECT_EQ(log.lines, endsOf({QStringLiteral("a")}));
}

TEST_F(JobQueue, StopProcessingKeepsWaitingJobsForALaterStart)
{
    add(QStringLiteral("a"), [&](auto& self) {
        queue.stopProcessing();
        self.end();
    });
    add(QStringLiteral("b"));
    queue.startProcessing();
    drainEvents();
    EXPECT_EQ(log.lines, endsOf({QStringLiteral("a")}));
    EXPECT_EQ(empty.size(), 0);
    queue.startProcessing();
    ASSERT_TRUE(waitForEmptiness());
    EXPECT_EQ(log.lines, endsOf({QStringLiteral("a"), QStringLiteral("b")}));
}

TEST_F(JobQueue, EmptinessComesAfterTheLastFinishedWasDelivered)
{
    QObject receiver;
    QStringList order;
    DirectJob* const job = add(QStringLiteral("a"));
    QObject::connect(job, &znAbstractJob::finished, [&] { order << QStringLiteral("direct"); });
    QObject::connect(
        job, &znAbstractJob::finished, &receiver, [&] { order << QStringLiteral("queued"); }, Qt::QueuedConnection);
    QObject::connect(&queue, &znJobQueue::jobQueueEmpty, [&] { order << QStringLiteral("empty"); });
    queue.startProcessing();
    ASSERT_TRUE(waitForEmptiness());
    EXPECT_EQ(order, QStringList({QStringLiteral("direct"), QStringLiteral("queued"), QStringLiteral("empty")}));
}

TEST_F(JobQueue, QueueThatHadNoJobNeverCallsItselfEmpty)
{
    queue.startProcessing();
    queue.abortAllJobs();
    queue.stopProcessing();
    drainEvents();
    EXPECT_EQ(empty.size(), 0);
}

TEST_F(JobQueue, EmptinessStaysSilentIfASlotAddedAJob)
{
    DirectJob* const job = add(QStringLiteral("a"));
    QObject::connect(job, &znAbstractJob::finished, [&] { add(QStringLiteral("b")); });
    queue.startProcessing();
    ASSERT_TRUE(waitForEmptiness());
    drainEvents();
    EXPECT_EQ(log.lines, endsOf({QStringLiteral("a"), QStringLiteral("b")}));
    EXPECT_EQ(empty.size(), 1);
}

TEST_F(JobQueue, EmptinessLooksAgainOnDelivery)
{
    DirectJob* const job = add(QStringLiteral("a"));
    job->abort();
    add(QStringLiteral("b"));
    drainEvents();
    EXPECT_EQ(empty.size(), 0);
    queue.startProcessing();
    EXPECT_TRUE(waitForEmptiness());
    drainEvents();
    EXPECT_EQ(empty.size(), 1);
}

TEST_F(JobQueue, EmptinessComesAgainAfterNewJobs)
{
    add(QStringLiteral("a"));
    queue.startProcessing();
    ASSERT_TRUE(waitForEmptiness());
    add(QStringLiteral("b"));
    ASSERT_TRUE(waitUntil([&] { return empty.size() == 2; }));
    drainEvents();
    EXPECT_EQ(empty.size(), 2);
}

TEST_F(JobQueue, AbortOfAWaitingJobEndsItUnrun)
{
    DirectJob* const job = add(QStringLiteral("a"));
    add(QStringLiteral("b"));
    job->abort();
    EXPECT_EQ(log.lines, QStringList({QStringLiteral("a finished 1")}));
    EXPECT_EQ(job->getState(), JobFailed);
    EXPECT_EQ(job->getErrorText(), QStringLiteral("Aborted"));
    queue.startProcessing();
    ASSERT_TRUE(waitForEmptiness());
    EXPECT_EQ(log.lines, QStringList({QStringLiteral("a finished 1")}) + endsOf({QStringLiteral("b")}));
}

TEST_F(JobQueue, AbortAllJobsEndsWaitingJobsAtOnceAndTellsEmptinessLater)
{
    add(QStringLiteral("a"));
    add(QStringLiteral("b"));
    queue.abortAllJobs();
    EXPECT_EQ(log.lines, QStringList({QStringLiteral("a finished 1"), QStringLiteral("b finished 1")}));
    EXPECT_EQ(empty.size(), 0);
    EXPECT_TRUE(waitForEmptiness());
    drainEvents();
    EXPECT_EQ(empty.size(), 1);
}

TEST_F(JobQueue, AbortAllJobsEndsAWaitingJobWhoseOwnAbortDoesNothing)
{
    struct Unstoppable : DirectJob {
        void abort() override {}
    };
    Unstoppable job;
    QSignalSpy finished(&job, &znAbstractJob::finished);
    queue.addJob(&job);
    queue.abortAllJobs();
    EXPECT_EQ(finished.size(), 1);
}

TEST_F(JobQueue, AbortAllJobsReachesARunningJob)
{
    struct Stoppable : DirectJob {
        using DirectJob::DirectJob;
        void abort() override { stopped = true; }
        bool stopped = false;
    };
    Stoppable job([&](auto& self) {
        queue.abortAllJobs();
        self.end(JobPartial);
    });
    log.watch(job, QStringLiteral("a "));
    queue.addJob(&job);
    add(QStringLiteral("b"));
    queue.startProcessing();
    ASSERT_TRUE(waitForEmptiness());
    EXPECT_TRUE(job.stopped);
    EXPECT_EQ(log.lines, QStringList({QStringLiteral("a starting"), QStringLiteral("a started"),
                                      QStringLiteral("b finished 1"), QStringLiteral("a finished 3")}));
}

TEST_F(JobQueue, JobsAddedDuringAnAbortStay)
{
    DirectJob* const job = add(QStringLiteral("a"));
    QObject::connect(job, &znAbstractJob::finished, [&] { add(QStringLiteral("b")); });
    queue.startProcessing();
    queue.abortAllJobs();
    ASSERT_TRUE(waitForEmptiness());
    EXPECT_EQ(log.lines, QStringList({QStringLiteral("a finished 1")}) + endsOf({QStringLiteral("b")}));
}

TEST_F(JobQueue, SlotMayDestroyOtherJobsDuringAnAbort)
{
    DirectJob* const first = add(QStringLiteral("a"));
    DirectJob* const second = add(QStringLiteral("b"));
    QObject::connect(first, &znAbstractJob::finished, [second] { delete second; });
    queue.abortAllJobs();
    EXPECT_EQ(log.lines, QStringList({QStringLiteral("a finished 1")}));
    EXPECT_TRUE(waitForEmptiness());
}

TEST_F(JobQueue, SlotMayDestroyTheQueueDuringAnAbort)
{
    auto* const own = new znJobQueue;
    own->setDeleteFinishedOrFailedJobs(true);
    const QPointer<DirectJob> first(new DirectJob);
    const QPointer<DirectJob> second(new DirectJob);
    own->addJob(first);
    own->addJob(second);
    QObject::connect(first, &znAbstractJob::finished, [own] { delete own; });
    own->abortAllJobs();
    EXPECT_TRUE(second.isNull());
    EXPECT_TRUE(waitUntil([&] { return first.isNull(); }));
}

TEST_F(JobQueue, TwoAnnouncementsCountAsOneEnd)
{
    add(QStringLiteral("a"), [](auto& self) {
        self.end(JobFailed);
        Q_EMIT self.processingFinished();
    });
    add(QStringLiteral("b"));
    queue.startProcessing();
    ASSERT_TRUE(waitForEmptiness());
    drainEvents();
    EXPECT_EQ(log.lines.filter(QStringLiteral("a finished 1")).size(), 2);
    EXPECT_EQ(log.lines.filter(QStringLiteral("b finished 0")).size(), 1);
    EXPECT_EQ(empty.size(), 1);
}

TEST_F(JobQueue, RunInsideFinishStaysInTheQueue)
{
    int runs = 0;
    DirectJob* const job = add(QStringLiteral("a"), [&](auto& self) { self.end(++runs < 3 ? JobFailed : JobPartial); });
    job->onFinish = [](auto& self) { self.getState() == JobFailed ? self.run() : self.endRun(); };
    add(QStringLiteral("b"));
    queue.startProcessing();
    ASSERT_TRUE(waitForEmptiness());
    EXPECT_EQ(runs, 3);
    EXPECT_EQ(log.lines.mid(6), QStringList({QStringLiteral("a finished 3")}) + endsOf({QStringLiteral("b")}));
}

TEST_F(JobQueue, OneProcessingJobAtATimeForAllQueues)
{
    znJobQueue other;
    QSignalSpy otherEmpty(&other, &znJobQueue::jobQueueEmpty);
    int working = 0;
    int most = 0;
    const auto body = [&](auto& self) {
        most = std::max(most, ++working);
        drainEvents();
        --working;
        self.end();
    };
    for (int i = 0; i < 3; ++i) {
        add(QStringLiteral("a"), body);
        other.addJob(new DirectJob(body, &jobs));
    }
    other.startProcessing();
    queue.startProcessing();
    ASSERT_TRUE(waitUntil([&] { return !empty.isEmpty() && !otherEmpty.isEmpty(); }));
    EXPECT_EQ(most, 1);
}

TEST_F(JobQueue, WaitsForAProcessingJobThatWasRunDirectly)
{
    DirectJob direct([&](auto& self) {
        drainEvents();
        self.end();
        drainEvents();
        log.lines << QStringLiteral("direct work is done");
    });
    add(QStringLiteral("a"));
    queue.startProcessing();
    direct.run();
    EXPECT_EQ(log.lines, QStringList({QStringLiteral("direct work is done")}));
    EXPECT_TRUE(waitForEmptiness());
}

TEST_F(JobQueue, WaitingTimerJobHoldsThePlace)
{
    TimerJob timer;
    log.watch(timer, QStringLiteral("timer "));
    queue.addJob(&timer);
    add(QStringLiteral("a"));
    queue.startProcessing();
    ASSERT_TRUE(waitForEmptiness());
    EXPECT_EQ(log.lines, endsOf({QStringLiteral("timer"), QStringLiteral("a")}));
}

TEST_F(JobQueue, QueuesOfEqualPriorityTakeTurns)
{
    znJobQueue other;
    QSignalSpy otherEmpty(&other, &znJobQueue::jobQueueEmpty);
    QString order;
    for (int i = 0; i < 4; ++i) {
        add(QStringLiteral("a"), [&](auto& self) {
            order += QLatin1Char('a');
            self.end();
        });
        other.addJob(new DirectJob(
            [&](auto& self) {
                order += QLatin1Char('b');
                self.end();
            },
            &jobs));
    }
    queue.startProcessing();
    other.startProcessing();
    ASSERT_TRUE(waitUntil([&] { return !empty.isEmpty() && !otherEmpty.isEmpty(); }));
    EXPECT_EQ(order, QStringLiteral("abababab"));
}

TEST_F(JobQueue, RefusesNoJobAndAJobThatIsInAQueue)
{
    znJobQueue other;
    DirectJob* const job = add(QStringLiteral("a"));
    queue.addJob(job);
    other.addJob(job);
    other.addJob(nullptr);
    queue.startProcessing();
    other.startProcessing();
    ASSERT_TRUE(waitForEmptiness());
    drainEvents();
    EXPECT_EQ(log.lines, endsOf({QStringLiteral("a")}));
}

TEST_F(JobQueue, AbortAllJobsInASlotOnStartingEndsATimerJobUnworked)
{
    bool worked = false;
    TimerJob job([&](auto& self) {
        worked = true;
        self.end();
    });
    log.watch(job, QStringLiteral("a "));
    QObject::connect(&job, &znAbstractJob::starting, &queue, &znJobQueue::abortAllJobs);
    queue.addJob(&job);
    queue.startProcessing();
    ASSERT_TRUE(waitForEmptiness());
    EXPECT_FALSE(QSignalSpy(&job, &znAbstractJob::finished).wait(30));
    EXPECT_FALSE(worked);
    EXPECT_EQ(log.lines, QStringList({QStringLiteral("a starting"), QStringLiteral("a finished 1")}));
}

TEST_F(JobQueue, AbortAllJobsEndsAJobThatWaitsForItsTimerAndWhoseOwnAbortDoesNothing)
{
    struct Unstoppable : FunctionJob<znAbstractTimerJob> {
        Unstoppable() : FunctionJob({}, 60'000'000, nullptr) {}
        void abort() override {}
    };
    Unstoppable job;
    QSignalSpy starting(&job, &znAbstractJob::starting);
    QSignalSpy finished(&job, &znAbstractJob::finished);
    queue.addJob(&job);
    queue.startProcessing();
    ASSERT_TRUE(waitUntil([&] { return !starting.isEmpty(); }));
    queue.abortAllJobs();
    ASSERT_EQ(finished.size(), 1);
    EXPECT_EQ(finished[0][0].value<JobState>(), JobFailed);
}
