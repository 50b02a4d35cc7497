#include "tests/standalone/znJobProcessing/JobQueueFixture.h"

using namespace znCADFileTypes;

TEST_F(JobQueue, EndedJobMayBeAddedAgain)
{
    DirectJob* const job = add(QStringLiteral("a"));
    queue.startProcessing();
    ASSERT_TRUE(waitForEmptiness());
    queue.addJob(job);
    ASSERT_TRUE(waitUntil([&] { return empty.size() == 2; }));
    EXPECT_EQ(log.lines, endsOf({QStringLiteral("a"), QStringLiteral("a")}));
}

TEST_F(JobQueue, EndedJobMayBeAddedAgainFromItsOwnFinished)
{
    int ends = 0;
    DirectJob* const job = add(QStringLiteral("a"));
    add(QStringLiteral("b"));
    QObject::connect(job, &znAbstractJob::finished, [&] {
        if (++ends < 3) {
            queue.addJob(job);
        }
    });
    queue.startProcessing();
    ASSERT_TRUE(waitForEmptiness());
    drainEvents();
    EXPECT_EQ(log.lines, endsOf({QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("a"), QStringLiteral("a")}));
    EXPECT_EQ(empty.size(), 1);
}

TEST_F(JobQueue, EndedJobMayGoToAnotherQueueFromItsOwnFinished)
{
    znJobQueue other;
    QSignalSpy otherEmpty(&other, &znJobQueue::jobQueueEmpty);
    DirectJob* const job = add(QStringLiteral("a"));
    bool told = false;
    QObject context;
    QObject::connect(job, &znAbstractJob::finished, &context, [&] {
        context.disconnect();
        job->disconnect(&context);
        other.addJob(job);
        other.startProcessing();
        drainEvents();
        told = !empty.isEmpty();
    });
    queue.startProcessing();
    ASSERT_TRUE(waitUntil([&] { return !empty.isEmpty() && !otherEmpty.isEmpty(); }));
    EXPECT_FALSE(told) << "jobQueueEmpty came before finished() was delivered";
    EXPECT_EQ(log.lines, endsOf({QStringLiteral("a"), QStringLiteral("a")}));
    add(QStringLiteral("the place is free"));
    EXPECT_TRUE(waitUntil([&] { return log.lines.size() == 9; }));
}

TEST_F(JobQueue, AbortedWaitingJobMayBeAddedAgainFromItsOwnFinished)
{
    DirectJob* const job = add(QStringLiteral("a"));
    const auto again = QObject::connect(job, &znAbstractJob::finished, [&] { queue.addJob(job); });
    job->abort();
    QObject::disconnect(again);
    queue.startProcessing();
    ASSERT_TRUE(waitForEmptiness());
    EXPECT_EQ(log.lines, QStringList({QStringLiteral("a finished 1")}) + endsOf({QStringLiteral("a")}));
}

TEST_F(JobQueue, JobRunDirectlyMayBeAddedFromItsOwnFinished)
{
    DirectJob job;
    log.watch(job, QStringLiteral("a "));
    const auto once = QObject::connect(&job, &znAbstractJob::finished, [&] { queue.addJob(&job); });
    job.run();
    QObject::disconnect(once);
    queue.startProcessing();
    ASSERT_TRUE(waitForEmptiness());
    EXPECT_EQ(log.lines, endsOf({QStringLiteral("a"), QStringLiteral("a")}));
}
