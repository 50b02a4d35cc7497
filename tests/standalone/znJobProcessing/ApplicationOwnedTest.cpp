// A program that makes and destroys application objects itself.

#include "standalone/znJobProcessing/ApplicationOwned.h"

#include "host/znJobProcessing/znJobQueue.h"
#include "standalone/znJobProcessing/ProcessLimit.h"
#include "tests/standalone/znJobProcessing/ProcessTestJobs.h"

#include <QPointer>
#include <QTimer>

#include <gtest/gtest.h>

#include <memory>

using namespace znCADFileTypes;

namespace
{

class Applications : public ::testing::Test
{
protected:
    Applications()
    {
        znJobs::setProcessLimitProvider([] { return 1U; });
    }
    ~Applications() override { znJobs::setProcessLimitProvider({}); }

    static std::unique_ptr<QCoreApplication> makeApplication()
    {
        static int count = 1;
        static char name[] = "applications";
        static char* words[] = {name, nullptr};
        return std::make_unique<QCoreApplication>(count, words);
    }

    /// Runs the queue until its emptiness ends the program, with whatever is posted at that moment.
    static void runUntilEmpty(znJobQueue& queue)
    {
        QObject::connect(&queue, &znJobQueue::jobQueueEmpty, QCoreApplication::instance(), &QCoreApplication::quit);
        queue.startProcessing();
        QCoreApplication::exec();
    }
};

TEST_F(Applications, EachStartsItsQueuedJobs)
{
    for (int round = 0; round < 3; ++round) {
        const auto application = makeApplication();
        znJobQueue queue;
        ScriptedJob process(QStringLiteral("exit 0"));
        DirectJob direct;
        TimerJob timer;
        for (znAbstractJob* job : {static_cast<znAbstractJob*>(&process), static_cast<znAbstractJob*>(&direct),
                                   static_cast<znAbstractJob*>(&timer)}) {
            queue.addJob(job);
        }
        QTimer::singleShot(10000, application.get(), &QCoreApplication::quit);
        runUntilEmpty(queue);
        EXPECT_EQ(process.getState(), JobSucceeded) << round;
        EXPECT_EQ(direct.getState(), JobSucceeded) << round;
        EXPECT_EQ(timer.getState(), JobSucceeded) << round;
    }
}

TEST_F(Applications, TheNextOneStartsJobsOfAQueueThatWasThereBefore)
{
    znJobQueue queue;
    DirectJob first;
    DirectJob second;
    int emptied = 0;
    QObject::connect(&queue, &znJobQueue::jobQueueEmpty, [&] { ++emptied; });
    queue.addJob(&first);
    queue.startProcessing();
    {
        const auto application = makeApplication();
        drainEvents();
    }
    makeApplication().reset(); // its loop never turned
    const auto application = makeApplication();
    queue.addJob(&second);
    EXPECT_TRUE(waitUntil([&] { return second.getState() == JobSucceeded; }));
    EXPECT_EQ(first.getState(), JobSucceeded);
    drainEvents();
    EXPECT_GE(emptied, 1);
}

TEST_F(Applications, EmptinessThatOneDidNotLiveToTellIsToldByTheNext)
{
    znJobQueue queue;
    int emptied = 0;
    QObject::connect(&queue, &znJobQueue::jobQueueEmpty, [&] { ++emptied; });
    DirectJob job;
    {
        const auto application = makeApplication();
        queue.addJob(&job);
        job.abort();
    }
    EXPECT_EQ(emptied, 0);
    const auto application = makeApplication();
    queue.addJob(&job);
    job.abort();
    EXPECT_TRUE(waitUntil([&] { return emptied == 1; }));
}

TEST_F(Applications, AJobThatEndedUnderOneIsDeletedByTheNext)
{
    znJobQueue queue;
    queue.setDeleteFinishedOrFailedJobs(true);
    const QPointer<DirectJob> job(new DirectJob);
    {
        const auto application = makeApplication();
        queue.addJob(job);
        job->abort();
    }
    EXPECT_FALSE(job.isNull());
    const auto application = makeApplication();
    const QPointer<DirectJob> next(new DirectJob);
    queue.addJob(next);
    next->abort();
    EXPECT_TRUE(waitUntil([&] { return job.isNull() && next.isNull(); }));
}

TEST_F(Applications, AJobThatIsLeftRunningHoldsNoPlaceOfTheNext)
{
    auto left = std::make_unique<ScriptedJob>(QStringLiteral("wait 60000"));
    {
        const auto application = makeApplication();
        znJobQueue queue;
        queue.addJob(left.get());
        queue.startProcessing();
        ASSERT_TRUE(waitUntil([&] { return left->getState() == JobRunning; }));
    }
    const auto application = makeApplication();
    znJobQueue queue;
    ScriptedJob job(QStringLiteral("exit 0"));
    queue.addJob(&job);
    queue.startProcessing();
    EXPECT_TRUE(waitUntil([&] { return job.getState() == JobSucceeded; }));
    left.reset();
    ScriptedJob another(QStringLiteral("exit 0"));
    queue.addJob(&another);
    EXPECT_TRUE(waitUntil([&] { return another.getState() == JobSucceeded; }));
}

TEST_F(Applications, OwnWhatIsTheirsAlone)
{
    QPointer<QObject> first;
    {
        const auto application = makeApplication();
        first = &znJobs::applicationOwned<QObject>();
        EXPECT_EQ(first->parent(), application.get());
        EXPECT_EQ(&znJobs::applicationOwned<QObject>(), first);
    }
    EXPECT_TRUE(first.isNull());
    const QPointer<QObject> nobodys(&znJobs::applicationOwned<QObject>());
    EXPECT_EQ(nobodys->parent(), nullptr);
    const auto application = makeApplication();
    EXPECT_EQ(znJobs::applicationOwned<QObject>().parent(), application.get());
    EXPECT_TRUE(nobodys.isNull());
}

} // namespace

int main(int argc, char** argv)
{
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
