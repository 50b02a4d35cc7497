#include "standalone/znJobProcessing/LostProcess.h"

#include "host/znJobProcessing/znJobQueue.h"
#include "standalone/znJobProcessing/ProcessOutput.h"
#include "tests/standalone/znJobProcessing/ProcessTestJobs.h"

#include <QSignalSpy>

#include <gmock/gmock.h>

namespace
{

using znCADFileTypes::JobFailed;
using znCADFileTypes::JobSucceeded;

/// The judge takes an end whose output has "lost" in it for a loss.
class LostProcessTest : public testing::Test
{
protected:
    LostProcessTest()
    {
        znJobs::setLossJudge([this](znProcessJob&, const QString&, const QByteArray& output) {
            ++m_asked;
            znJobs::LossVerdict verdict;
            verdict.lost = output.contains("lost");
            if (verdict.lost && !m_again.isEmpty())
                verdict.again = scripted(m_again.takeFirst());
            return verdict;
        });
    }
    ~LostProcessTest() override { znJobs::setLossJudge({}); }

    void runToEnd(znAbstractJob& job)
    {
        QSignalSpy finished(&job, &znAbstractJob::finished);
        job.run();
        ASSERT_TRUE(!finished.isEmpty() || finished.wait(60000));
        ASSERT_EQ(finished.size(), 1);
    }

    QStringList m_again; ///< scripts of further tries
    int m_asked = 0;
};

TEST_F(LostProcessTest, ALostProcessIsTriedAgainWithinTheSameRun)
{
    m_again = QStringList{QStringLiteral("exit 0")};
    ScriptedJob job(QStringLiteral("stderr lost;exit 9"));
    QSignalSpy starting(&job, &znAbstractJob::starting);
    QSignalSpy started(&job, &znAbstractJob::started);
    runToEnd(job);
    EXPECT_EQ(job.getState(), JobSucceeded);
    EXPECT_EQ(job.getExitCode(), 0);
    EXPECT_EQ(starting.size(), 1);
    EXPECT_EQ(started.size(), 1);
    EXPECT_EQ(m_asked, 2);
}

TEST_F(LostProcessTest, AnExitCodeOfZeroDoesNotHideALoss)
{
    ScriptedJob job(QStringLiteral("stderr lost;exit 0"));
    runToEnd(job);
    EXPECT_EQ(job.getState(), JobFailed);
    EXPECT_EQ(job.getExitCode(), 250);
}

TEST_F(LostProcessTest, AFailureOfItsOwnIsNotTriedAgain)
{
    m_again = QStringList{QStringLiteral("exit 0")};
    ScriptedJob job(QStringLiteral("stderr broken;exit 7"));
    runToEnd(job);
    EXPECT_EQ(job.getState(), JobFailed);
    EXPECT_EQ(job.getExitCode(), 7);
    EXPECT_EQ(m_asked, 1);
    EXPECT_EQ(m_again.size(), 1);
}

TEST_F(LostProcessTest, AnAbortDuringTheSecondTryEndsIt)
{
    const TestFolder folder;
    m_again = QStringList{folder.command(QStringLiteral("pid"), QStringLiteral("id")) +
                          QStringLiteral(";progress 1 Write;stdout there;wait 600000")};
    ScriptedJob job(QStringLiteral("stderr lost;exit 9"));
    QSignalSpy finished(&job, &znAbstractJob::finished);
    job.run();
    while (!folder.has(QStringLiteral("id")) || folder.read(QStringLiteral("id")).isEmpty())
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    job.abort();
    ASSERT_TRUE(finished.wait(60000));
    EXPECT_EQ(job.getState(), JobFailed);
    EXPECT_TRUE(hasEnded(folder.read(QStringLiteral("id")).toLongLong()));
    EXPECT_EQ(m_asked, 1);
}

TEST_F(LostProcessTest, AnAbortedProcessIsNotJudged)
{
    m_again = QStringList{QStringLiteral("exit 0")};
    ScriptedJob job(QStringLiteral("stderr lost;wait 600000"));
    QSignalSpy finished(&job, &znAbstractJob::finished);
    QObject::connect(&job, &znAbstractJob::started, &job, [&job] { job.abort(); });
    job.run();
    ASSERT_TRUE(finished.wait(60000));
    EXPECT_EQ(job.getState(), JobFailed);
    EXPECT_EQ(m_asked, 0);
}

TEST_F(LostProcessTest, TheSecondTryKeepsThePlaceInTheQueue)
{
    m_again = QStringList{QStringLiteral("exit 0"), QStringLiteral("exit 0")};
    znJobQueue queue;
    QSignalSpy empty(&queue, &znJobQueue::jobQueueEmpty);
    ScriptedJob one(QStringLiteral("stderr lost;exit 1"));
    ScriptedJob two(QStringLiteral("stderr lost;exit 1"));
    queue.addJob(&one);
    queue.addJob(&two);
    queue.startProcessing();
    ASSERT_TRUE(empty.wait(60000));
    EXPECT_EQ(one.getState(), JobSucceeded);
    EXPECT_EQ(two.getState(), JobSucceeded);
    EXPECT_EQ(empty.size(), 1);
}

} // namespace
