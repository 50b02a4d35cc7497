#include "host/znJobProcessing/znJobQueue.h"
#include "tests/loader/LoaderTest.h"

#include <QTimer>

using namespace znCADFileTypes;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

class LoaderAbortTest : public LoaderTest
{
protected:
    /// Parts of which the first one ends at once and the others would take ten minutes.
    void referToSlowParts(int count)
    {
        refer("quick", writePart(QStringLiteral("quick.stp"), {"head"}));
        for (int i = 1; i < count; ++i)
            refer("slow", writePart(QStringLiteral("slow %1.stp").arg(i), {"head"}, "wait 600000\n"));
    }
};

TEST_F(LoaderAbortTest, AbortInTheWaitEndsAllChildrenAndKeepsWhatCame)
{
    referToSlowParts(5);
    const auto job = makeLoader();
    QObject::connect(job.get(), &znPtxLoaderJob::childPtxImportFinished, job.get(), [&](const QString& file) {
        if (file.endsWith(QStringLiteral("quick.stp")))
            QTimer::singleShot(0, job.get(), &znAbstractJob::abort);
    });
    // The quick one may come last in the table: then somebody has to give up one slow part after the other.
    set("processes.most", QStringLiteral("5"));
    LoaderLog log(*job);
    log.run();
    EXPECT_EQ(job->getState(), JobPartial);
    EXPECT_EQ(log.count(QStringLiteral("end of")), 5);
    EXPECT_EQ(log.count(QStringLiteral("all ended")), 1);
    EXPECT_THAT(namesBelow(*job, 0), ElementsAre("head"));
    EXPECT_THAT(namesBelow(*job, 1), IsEmpty());
    EXPECT_EQ(log.lines().last(), QStringLiteral("finished 3"));
}

TEST_F(LoaderAbortTest, WaitingChildrenEndWithoutHavingRun)
{
    for (int i = 0; i < 6; ++i)
        refer("slow", writePart(QStringLiteral("slow %1.stp").arg(i), {"head"},
                                line("append", QStringLiteral("runs"), "run") + "wait 600000\n"));
    const auto job = makeLoader();
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, [&] {
        QFile runs(path(QStringLiteral("runs")));
        if (runs.open(QIODevice::ReadOnly) && runs.readAll().count('\n') == 2)
            job->abort();
    });
    watch.start(1);
    LoaderLog log(*job);
    log.run();
    EXPECT_EQ(job->getState(), JobPartial);
    EXPECT_EQ(readLines(QStringLiteral("runs")).size(), 2);
    EXPECT_EQ(log.count(QStringLiteral("end of")), 6);
    EXPECT_EQ(outputs(), QStringList(QStringLiteral("engine.osb")));
}

TEST_F(LoaderAbortTest, AbortWhileChildrenAreAddedEndsThoseThatAreThere)
{
    for (int i = 0; i < 4; ++i)
        refer("part", writePart(QStringLiteral("part %1.stp").arg(i), {"head"}));
    const auto job = makeLoader();
    QStringList made;
    QObject::connect(job.get(), &znPtxLoaderJob::childPtxConverterJobCreated, [&](const znPtxConverterJob* child) {
        made << QFileInfo(child->getInputFile()).fileName();
        if (made.size() == 3)
            job->abort();
    });
    LoaderLog log(*job);
    log.run();
    // The first two had been queued; the third and the fourth are converted, and the wait lasts until they have ended.
    EXPECT_EQ(made.size(), 4);
    EXPECT_EQ(job->getState(), JobPartial);
    EXPECT_EQ(log.count(QStringLiteral("end of")), 4);
    EXPECT_EQ(log.count(QStringLiteral("loaded")), 2);
    EXPECT_EQ(log.count(QStringLiteral("all ended")), 1);
    EXPECT_LT(log.lines().indexOf(QStringLiteral("end of ") + made[3]),
              log.lines().indexOf(QStringLiteral("all ended")));
    for (unsigned i = 0; i < 4; ++i)
        EXPECT_EQ(namesBelow(*job, i).size(), made.indexOf(QStringLiteral("part %1.stp").arg(i)) >= 2 ? 1u : 0u) << i;
}

TEST_F(LoaderAbortTest, AbortAfterTheLastChildWasAddedEndsTheWait)
{
    refer("part", writePart(QStringLiteral("part.stp"), {"head"}));
    refer("other", writePart(QStringLiteral("other.stp"), {"head"}));
    const auto job = makeLoader();
    // From the event loop of the wait, before any child had its turn.
    QTimer::singleShot(0, job.get(), &znAbstractJob::abort);
    LoaderLog log(*job);
    log.run();
    EXPECT_EQ(log.count(QStringLiteral("end of")), 2);
    EXPECT_EQ(log.lines().last().left(8), QStringLiteral("finished"));
    EXPECT_EQ(log.count(QStringLiteral("all ended")), 1);
}

TEST_F(LoaderAbortTest, AbortWithoutChildrenDoesNothing)
{
    const auto job = makeLoader();
    LoaderLog log(*job);
    job->abort();
    EXPECT_EQ(log.lines(), QStringList());
    EXPECT_EQ(log.run().last(), QStringLiteral("finished 0"));
    job->abort();
    drainEvents();
    EXPECT_EQ(log.lines().last(), QStringLiteral("finished 0"));
}

TEST_F(LoaderAbortTest, AQueueAbortsTheChildrenOfTheJobThatItRuns)
{
    referToSlowParts(3);
    set("processes.most", QStringLiteral("3"));
    const auto job = makeLoader();
    znJobQueue queue;
    queue.addJob(job.get());
    QObject::connect(job.get(), &znPtxLoaderJob::childPtxImportFinished, &queue, [&](const QString& file) {
        if (file.endsWith(QStringLiteral("quick.stp")))
            queue.abortAllJobs();
    });
    LoaderLog log(*job);
    queue.startProcessing();
    EXPECT_TRUE(waitUntil([&] { return log.count(QStringLiteral("finished")) == 1; }));
    EXPECT_EQ(log.lines().last(), QStringLiteral("finished 3"));
}

} // namespace
