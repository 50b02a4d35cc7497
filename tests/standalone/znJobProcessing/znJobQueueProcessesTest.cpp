#include "host/znJobProcessing/znManagedJobQueue.h"
#include "host/znJobProcessing/znParallelJobManager.h"
#include "standalone/znJobProcessing/ProcessLimit.h"
#include "tests/standalone/znJobProcessing/ProcessTestJobs.h"

#include <QPointer>
#include <QSignalSpy>
#include <QTimer>

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>

using namespace znCADFileTypes;

/// Queues of process jobs under a limit of the test's own.
class ProcessQueue : public ::testing::Test
{
protected:
    ProcessQueue()
    {
        znJobs::setProcessLimitProvider([this] { return limit; });
    }
    ~ProcessQueue() override { znJobs::setProcessLimitProvider({}); }

    /// A job for a queue that counts among the running ones and notes its end under `name`.
    ScriptedJob* job(const QString& name, const QString& script = QStringLiteral("exit 0"))
    {
        auto* const made = new ScriptedJob(script, &jobs);
        QObject::connect(made, &znAbstractJob::starting, [this, name] {
            order << name;
            most = std::max(most, ++running);
        });
        QObject::connect(made, &znAbstractJob::finished, [this] { --running; });
        return made;
    }

    static bool waitForEmptiness(std::initializer_list<QSignalSpy*> queues)
    {
        return waitUntil(
            [&] { return std::all_of(queues.begin(), queues.end(), [](QSignalSpy* spy) { return !spy->isEmpty(); }); });
    }

    unsigned limit = 1;
    int running = 0;
    int most = 0;
    QStringList order;
    TestFolder folder;
    QObject jobs;
    znManagedJobQueue queue{nullptr};
    znManagedJobQueue other{nullptr};
    QSignalSpy empty{&queue, &znJobQueue::jobQueueEmpty};
    QSignalSpy otherEmpty{&other, &znJobQueue::jobQueueEmpty};
};

TEST_F(ProcessQueue, OneLimitBindsAllQueues)
{
    limit = 3;
    for (int i = 0; i < 10; ++i) {
        queue.addJob(job(QStringLiteral("a")));
        other.addJob(job(QStringLiteral("b")));
    }
    queue.startProcessing();
    other.startProcessing();
    ASSERT_TRUE(waitForEmptiness({&empty, &otherEmpty}));
    EXPECT_EQ(most, 3);
    EXPECT_EQ(order.size(), 20);
}

TEST_F(ProcessQueue, RunsAsManyJobsAsTheLimitAllows)
{
    limit = 4;
    for (int i = 0; i < 6; ++i) {
        queue.addJob(job(QStringLiteral("a"), folder.command(QStringLiteral("wait-for"), QStringLiteral("go"))));
    }
    queue.startProcessing();
    ASSERT_TRUE(waitUntil([&] { return running == 4; }));
    drainEvents();
    EXPECT_EQ(running, 4);
    folder.write(QStringLiteral("go"));
    EXPECT_TRUE(waitForEmptiness({&empty}));
}

TEST_F(ProcessQueue, ChangedLimitCountsFromTheNextStart)
{
    limit = 2;
    for (int i = 0; i < 3; ++i) {
        queue.addJob(job(QStringLiteral("first"), folder.command(QStringLiteral("wait-for"), QStringLiteral("go"))));
    }
    queue.startProcessing();
    ASSERT_TRUE(waitUntil([&] { return running == 2; }));
    limit = 1;
    queue.addJob(job(QStringLiteral("second")));
    drainEvents();
    EXPECT_EQ(running, 2);
    most = 0;
    folder.write(QStringLiteral("go"));
    ASSERT_TRUE(waitForEmptiness({&empty}));
    EXPECT_EQ(most, 1);
    EXPECT_EQ(order.last(), QStringLiteral("second"));
}

TEST_F(ProcessQueue, HigherPriorityStartsFirstAndEqualOnesInTheOrderAdded)
{
    queue.setDefaultPriority(LowestPriority);
    queue.addJob(job(QStringLiteral("lowest")));
    queue.addJob(job(QStringLiteral("child 1")), ChildPriority);
    queue.addJob(job(QStringLiteral("low")), LowPriority);
    queue.addJob(job(QStringLiteral("high")), HighPriority);
    queue.addJob(job(QStringLiteral("child 2")), ChildPriority);
    queue.startProcessing();
    ASSERT_TRUE(waitForEmptiness({&empty}));
    EXPECT_EQ(order, QStringList({QStringLiteral("high"), QStringLiteral("child 1"), QStringLiteral("child 2"),
                                  QStringLiteral("low"), QStringLiteral("lowest")}));
}

TEST_F(ProcessQueue, PriorityHoldsOverQueuesAndAPlainQueueIsLow)
{
    znJobQueue plain;
    QSignalSpy plainEmpty(&plain, &znJobQueue::jobQueueEmpty);
    queue.setDefaultPriority(LowestPriority);
    other.setDefaultPriority(ChildPriority);
    queue.addJob(job(QStringLiteral("lowest")));
    plain.addJob(job(QStringLiteral("plain")));
    other.addJob(job(QStringLiteral("child")));
    queue.startProcessing();
    plain.startProcessing();
    other.startProcessing();
    ASSERT_TRUE(waitForEmptiness({&empty, &otherEmpty, &plainEmpty}));
    EXPECT_EQ(order, QStringList({QStringLiteral("child"), QStringLiteral("plain"), QStringLiteral("lowest")}));
}

TEST_F(ProcessQueue, LowPriorityIsNotKeptWaitingForEver)
{
    queue.addJob(job(QStringLiteral("low")), LowPriority);
    for (int i = 0; i < 20; ++i) {
        other.addJob(job(QStringLiteral("high")), HighPriority);
    }
    queue.startProcessing();
    other.startProcessing();
    ASSERT_TRUE(waitForEmptiness({&empty, &otherEmpty}));
    EXPECT_EQ(order.indexOf(QStringLiteral("low")), 8); // four times the two classes that compete
}

TEST_F(ProcessQueue, QueuesOfEqualPriorityTakeTurns)
{
    for (int i = 0; i < 3; ++i) {
        queue.addJob(job(QStringLiteral("a")));
    }
    for (int i = 0; i < 3; ++i) {
        other.addJob(job(QStringLiteral("b")));
    }
    queue.startProcessing();
    other.startProcessing();
    ASSERT_TRUE(waitForEmptiness({&empty, &otherEmpty}));
    EXPECT_EQ(order.join(QString()), QStringLiteral("ababab"));
}

TEST_F(ProcessQueue, RunInsideFinishKeepsTheSlot)
{
    ScriptedJob* const retrying = job(QStringLiteral("retrying"), QStringLiteral("exit 5"));
    retrying->onFinish = [](ScriptedJob& self) {
        self.setScript(QStringLiteral("exit 0"));
        self.getExitCode() == 5 ? self.run() : self.endRun();
    };
    QSignalSpy finished(retrying, &znAbstractJob::finished);
    queue.addJob(retrying);
    queue.addJob(job(QStringLiteral("next")));
    queue.startProcessing();
    ASSERT_TRUE(waitForEmptiness({&empty}));
    EXPECT_EQ(order, QStringList({QStringLiteral("retrying"), QStringLiteral("retrying"), QStringLiteral("next")}));
    EXPECT_EQ(finished.size(), 1);
}

TEST_F(ProcessQueue, ProcessAndProcessingJobsDoNotHoldEachOtherUp)
{
    DirectJob direct([&](auto& self) {
        folder.write(QStringLiteral("go"));
        self.end();
    });
    queue.addJob(job(QStringLiteral("a"), folder.command(QStringLiteral("wait-for"), QStringLiteral("go"))));
    queue.addJob(job(QStringLiteral("b")));
    queue.addJob(&direct);
    queue.startProcessing();
    EXPECT_TRUE(waitForEmptiness({&empty}));
}

TEST_F(ProcessQueue, ChildrenRunInsideTheWaitLoopOfAProcessingJobAndDoNotPileUp)
{
    limit = 2;
    int mostAlive = 0;
    bool waiting = true;
    DirectJob parent([&](auto& self) {
        znManagedJobQueue children(nullptr);
        children.setDeleteFinishedOrFailedJobs(true);
        QObject::connect(&children, &znJobQueue::jobQueueEmpty, [&] { waiting = false; });
        int ended = 0;
        for (int i = 0; i < 100; ++i) {
            auto* const child = new ScriptedJob(QStringLiteral("exit 0"), &children);
            QObject::connect(child, &znAbstractJob::finished, [&ended] { ++ended; });
            children.addJob(child);
        }
        children.startProcessing();
        while (waiting) {
            QCoreApplication::processEvents();
            mostAlive = std::max(mostAlive, children.findChildren<ScriptedJob*>().size() - (100 - ended));
        }
        EXPECT_EQ(ended, 100);
        EXPECT_TRUE(children.findChildren<ScriptedJob*>().isEmpty());
        self.end();
    });
    queue.addJob(&parent);
    queue.startProcessing();
    ASSERT_TRUE(waitForEmptiness({&empty}));
    EXPECT_LE(mostAlive, 4);
}

TEST_F(ProcessQueue, AbortOfAWaitingJobLaunchesNothing)
{
    ScriptedJob* const waiting = job(QStringLiteral("a"));
    QSignalSpy finished(waiting, &znAbstractJob::finished);
    queue.addJob(waiting);
    waiting->abort();
    ASSERT_EQ(finished.size(), 1);
    EXPECT_EQ(finished[0][0].value<JobState>(), JobFailed);
    EXPECT_FALSE(waiting->getExitCode().has_value());
    queue.startProcessing();
    ASSERT_TRUE(waitForEmptiness({&empty}));
    EXPECT_TRUE(order.isEmpty());
}

TEST_F(ProcessQueue, AbortAllJobsEndsRunningAndWaitingOnes)
{
    limit = 2;
    queue.setDeleteFinishedOrFailedJobs(true);
    int failed = 0;
    for (int i = 0; i < 5; ++i) {
        ScriptedJob* const made = job(QStringLiteral("a"), QStringLiteral("wait 60000"));
        QObject::connect(made, &znAbstractJob::finished, [&](JobState state) { failed += state == JobFailed; });
        queue.addJob(made);
    }
    queue.startProcessing();
    ASSERT_TRUE(waitUntil([&] { return running == 2; }));
    queue.abortAllJobs();
    EXPECT_EQ(failed, 3);
    ASSERT_TRUE(waitForEmptiness({&empty}));
    EXPECT_EQ(failed, 5);
    EXPECT_EQ(order.size(), 2);
    EXPECT_TRUE(waitUntil([&] { return jobs.children().isEmpty(); }));
}

TEST_F(ProcessQueue, DestroyedRunningJobFreesItsSlot)
{
    ScriptedJob* const first = job(QStringLiteral("a"), QStringLiteral("wait 60000"));
    queue.addJob(first);
    queue.addJob(job(QStringLiteral("b")));
    queue.startProcessing();
    ASSERT_TRUE(waitUntil([&] { return running == 1; }));
    delete first;
    ASSERT_TRUE(waitForEmptiness({&empty}));
    EXPECT_EQ(order, QStringList({QStringLiteral("a"), QStringLiteral("b")}));
}

TEST_F(ProcessQueue, DestroyedQueueTakesTheProcessesOfItsChildrenAlong)
{
    auto own = std::make_unique<znManagedJobQueue>(nullptr);
    auto* const child = new ScriptedJob(QStringLiteral("wait 60000"), own.get());
    QSignalSpy started(child, &znAbstractJob::started);
    QSignalSpy finished(child, &znAbstractJob::finished);
    own->addJob(child);
    own->startProcessing();
    ASSERT_TRUE(waitUntil([&] { return !started.isEmpty(); }));
    const qint64 process = child->processId();
    own.reset();
    EXPECT_TRUE(hasEnded(process));
    EXPECT_EQ(finished.size(), 0);
    queue.addJob(job(QStringLiteral("the slot is free")));
    queue.startProcessing();
    EXPECT_TRUE(waitForEmptiness({&empty}));
}

TEST_F(ProcessQueue, DestroyedQueueAsksRunningJobsOfOthersToStop)
{
    auto own = std::make_unique<znManagedJobQueue>(nullptr);
    own->setDeleteFinishedOrFailedJobs(true);
    const QPointer<ScriptedJob> orphan(new ScriptedJob(QStringLiteral("wait 60000")));
    QSignalSpy started(orphan, &znAbstractJob::started);
    QSignalSpy finished(orphan, &znAbstractJob::finished);
    own->addJob(orphan);
    own->startProcessing();
    ASSERT_TRUE(waitUntil([&] { return !started.isEmpty(); }));
    own.reset();
    EXPECT_EQ(finished.size(), 0);
    EXPECT_TRUE(waitUntil([&] { return orphan.isNull(); }));
    EXPECT_EQ(finished.size(), 1);
}

TEST_F(ProcessQueue, SlotIsHeldUntilAnUpdateInsideFinishHasEnded)
{
    ScriptedJob* const outer = job(QStringLiteral("outer"), QStringLiteral("exit 4"));
    outer->onFinish = [&](ScriptedJob& self) {
        auto* const update = new ScriptedJob(folder.command(QStringLiteral("wait-for"), QStringLiteral("go")));
        QObject::connect(update, &znAbstractJob::finished, [&self, update] {
            self.endRunPlainly();
            update->deleteLater();
        });
        update->run();
        QTimer::singleShot(20, &self, [this] {
            EXPECT_EQ(order.size(), 1);
            folder.write(QStringLiteral("go"));
        });
    };
    queue.addJob(outer);
    queue.addJob(job(QStringLiteral("next")));
    queue.startProcessing();
    ASSERT_TRUE(waitForEmptiness({&empty}));
    EXPECT_EQ(order, QStringList({QStringLiteral("outer"), QStringLiteral("next")}));
}

TEST(ParallelJobManager, IsOneObjectWithALimitOfAtLeastOne)
{
    EXPECT_EQ(znParallelJobManager::the(), znParallelJobManager::the());
    EXPECT_GE(znParallelJobManager::the()->getMaxNumProcesses(), 1u);
    EXPECT_EQ(znParallelJobManager::the()->getMaxNumProcesses(), znJobs::defaultProcessLimit());
}

TEST(ParallelJobManager, InstalledProviderCountsFromTheNextCall)
{
    unsigned setting = 7;
    znJobs::setProcessLimitProvider([&] { return setting; });
    EXPECT_EQ(znParallelJobManager::the()->getMaxNumProcesses(), 7u);
    setting = 0;
    EXPECT_EQ(znParallelJobManager::the()->getMaxNumProcesses(), 1u);
    znJobs::setProcessLimitProvider({});
    EXPECT_EQ(znParallelJobManager::the()->getMaxNumProcesses(), znJobs::defaultProcessLimit());
}

TEST(ParallelJobManager, DefaultGivesEachProcessAProcessorAndAGigabyte)
{
    EXPECT_EQ(znJobs::processLimitFor(8, 64000), 8u);
    EXPECT_EQ(znJobs::processLimitFor(8, 3 * 1024), 3u);
    EXPECT_EQ(znJobs::processLimitFor(8, 100), 1u);
    EXPECT_EQ(znJobs::processLimitFor(0, 64000), 1u);
}
