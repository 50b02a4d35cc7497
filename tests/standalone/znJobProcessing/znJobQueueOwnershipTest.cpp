#include "tests/standalone/znJobProcessing/JobQueueFixture.h"

#include <QEventLoop>
#include <QPointer>
#include <QTimer>

#include <algorithm>
#include <memory>

using namespace znCADFileTypes;

TEST_F(JobQueue, KeepsEndedJobsUnlessToldToDeleteThem)
{
    const QPointer<DirectJob> job(add(QStringLiteral("a")));
    queue.startProcessing();
    ASSERT_TRUE(waitForEmptiness());
    drainEvents();
    EXPECT_FALSE(job.isNull());
}

TEST_F(JobQueue, DeletesFailedFinishedAndAbortedJobs)
{
    queue.setDeleteFinishedOrFailedJobs(true);
    const QPointer<DirectJob> good(add(QStringLiteral("good")));
    const QPointer<DirectJob> bad(add(QStringLiteral("bad"), [](auto& self) { self.end(JobFailed); }));
    const QPointer<DirectJob> aborted(add(QStringLiteral("aborted")));
    aborted->abort();
    queue.startProcessing();
    EXPECT_TRUE(waitUntil([&] { return good.isNull() && bad.isNull() && aborted.isNull(); }));
}

TEST_F(JobQueue, JobStaysAliveInANestedLoopOfASlotOnFinished)
{
    queue.setDeleteFinishedOrFailedJobs(true);
    const QPointer<DirectJob> job(add(QStringLiteral("a")));
    bool aliveInSlot = false;
    QObject::connect(job, &znAbstractJob::finished, [&] {
        QEventLoop loop;
        QTimer::singleShot(20, &loop, &QEventLoop::quit);
        loop.exec();
        aliveInSlot = !job.isNull();
    });
    queue.startProcessing();
    ASSERT_TRUE(waitUntil([&] { return job.isNull(); }));
    EXPECT_TRUE(aliveInSlot);
}

TEST_F(JobQueue, JobStaysAliveWhileItsWorkIsOnTheStack)
{
    queue.setDeleteFinishedOrFailedJobs(true);
    QPointer<znAbstractJob> job;
    bool aliveAfterEnd = false;
    job = add(QStringLiteral("a"), [&](auto& self) {
        self.end();
        drainEvents();
        aliveAfterEnd = !job.isNull();
    });
    queue.startProcessing();
    ASSERT_TRUE(waitUntil([&] { return job.isNull(); }));
    EXPECT_TRUE(aliveAfterEnd);
}

TEST_F(JobQueue, QueuedSlotsOnFinishedFindTheJobAlive)
{
    queue.setDeleteFinishedOrFailedJobs(true);
    const QPointer<DirectJob> job(add(QStringLiteral("a")));
    bool alive = false;
    QObject::connect(
        job, &znAbstractJob::finished, &queue, [&] { alive = !job.isNull(); }, Qt::QueuedConnection);
    queue.startProcessing();
    ASSERT_TRUE(waitUntil([&] { return job.isNull(); }));
    EXPECT_TRUE(alive);
}

TEST_F(JobQueue, EndedJobsDoNotPileUpInAWaitLoop)
{
    znJobQueue children;
    children.setDeleteFinishedOrFailedJobs(true);
    int made = 0;
    int mostAlive = 0;
    // Jobs that end at the level of the wait loop itself, where a deferred delete would wait for the loop's end.
    DirectJob parent([&](auto& self) {
        for (; made < 1000; ++made) {
            auto* const child = new DirectJob({}, &children);
            children.addJob(child);
            child->abort();
            QCoreApplication::processEvents();
            mostAlive = std::max(mostAlive, children.findChildren<DirectJob*>().size());
        }
        self.end();
    });
    parent.run();
    EXPECT_EQ(made, 1000);
    EXPECT_LE(mostAlive, 1);
}

TEST_F(JobQueue, DestroyedWaitingJobLeavesTheQueue)
{
    DirectJob* const job = add(QStringLiteral("a"));
    add(QStringLiteral("b"));
    delete job;
    queue.startProcessing();
    ASSERT_TRUE(waitForEmptiness());
    EXPECT_EQ(log.lines, endsOf({QStringLiteral("b")}));
}

TEST_F(JobQueue, DestructionOfTheLastWaitingJobLeavesTheQueueEmpty)
{
    delete add(QStringLiteral("a"));
    EXPECT_TRUE(waitForEmptiness());
    EXPECT_TRUE(log.lines.isEmpty());
}

TEST_F(JobQueue, DestroyedRunningJobFreesItsPlace)
{
    auto* const timer = new TimerJob;
    queue.addJob(timer);
    add(QStringLiteral("a"));
    QObject::connect(timer, &znAbstractJob::starting,
                     [timer] { QTimer::singleShot(0, timer, [timer] { delete timer; }); });
    queue.startProcessing();
    ASSERT_TRUE(waitForEmptiness());
    EXPECT_EQ(log.lines, endsOf({QStringLiteral("a")}));
}

TEST_F(JobQueue, DestroyedQueueLetsGoOfJobsWithoutASignal)
{
    auto own = std::make_unique<znJobQueue>();
    DirectJob kept;
    auto* const child = new DirectJob({}, own.get());
    QSignalSpy ends(&kept, &znAbstractJob::finished);
    QSignalSpy childEnds(child, &znAbstractJob::finished);
    own->addJob(&kept);
    own->addJob(child);
    own->startProcessing();
    own.reset();
    drainEvents();
    EXPECT_EQ(ends.size(), 0);
    EXPECT_EQ(childEnds.size(), 0);
    queue.addJob(&kept);
    queue.startProcessing();
    EXPECT_TRUE(waitForEmptiness());
    EXPECT_EQ(ends.size(), 1);
}

TEST_F(JobQueue, DestroyedDeletingQueueTakesWaitingJobsWithoutParentAlong)
{
    auto own = std::make_unique<znJobQueue>();
    own->setDeleteFinishedOrFailedJobs(true);
    const QPointer<DirectJob> orphan(new DirectJob);
    const QPointer<DirectJob> owned(new DirectJob({}, &jobs));
    own->addJob(orphan);
    own->addJob(owned);
    own.reset();
    EXPECT_TRUE(orphan.isNull());
    EXPECT_FALSE(owned.isNull());
}

TEST_F(JobQueue, DestroyedQueueStopsARunningJobAndStillDeletesIt)
{
    auto own = std::make_unique<znJobQueue>();
    own->setDeleteFinishedOrFailedJobs(true);
    const QPointer<znAbstractTimerJob> job(new FunctionJob<znAbstractTimerJob>({}, 60'000'000, nullptr));
    QSignalSpy ends(job, &znAbstractJob::finished);
    QSignalSpy starts(job, &znAbstractJob::starting);
    own->addJob(job);
    own->startProcessing();
    ASSERT_TRUE(waitUntil([&] { return !starts.isEmpty(); }));
    own.reset();
    EXPECT_EQ(ends.size(), 0);
    ASSERT_TRUE(waitUntil([&] { return job.isNull(); }));
    ASSERT_EQ(ends.size(), 1);
    EXPECT_EQ(ends[0][0].value<JobState>(), JobFailed);
}

TEST_F(JobQueue, DeletingQueueLetsNobodyHaveAnEndedJob)
{
    queue.setDeleteFinishedOrFailedJobs(true);
    const QPointer<DirectJob> job(add(QStringLiteral("a")));
    znJobQueue other;
    QObject::connect(job, &znAbstractJob::finished, [&] {
        queue.addJob(job);
        other.addJob(job);
    });
    queue.startProcessing();
    other.startProcessing();
    EXPECT_TRUE(waitUntil([&] { return job.isNull(); }));
    drainEvents();
    EXPECT_EQ(log.lines, endsOf({QStringLiteral("a")}));
}
