#include "host/znJobProcessing/znOsbLoaderJob.h"

#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "host/znJobProcessing/znJobQueue.h"
#include "standalone/znUtils/LogSink.h"
#include "tests/files/scenefile/SceneFileTest.h"
#include "tests/standalone/znJobProcessing/TestJobs.h"

#include <QPointer>
#include <QSignalSpy>

namespace
{

using namespace znCADFileTypes;

/// Loads the way a subclass with more to do does: it announces the end itself.
class HoldingJob : public znOsbLoaderJob
{
public:
    using znOsbLoaderJob::znOsbLoaderJob;

    JobState stateAfterTheBase = JobWaiting;

protected:
    void process() override
    {
        Q_EMIT started();
        m_holdFinish = true;
        znOsbLoaderJob::process();
        m_holdFinish = false;
        stateAfterTheBase = m_state;
        m_state = JobPartial;
        Q_EMIT processingFinished();
    }
};

class OsbLoaderJobTest : public SceneFileTest
{
protected:
    OsbLoaderJobTest()
    {
        zn::utils::setLogSink([this](const char* text) { logged << QString::fromUtf8(text); });
    }
    ~OsbLoaderJobTest() override { zn::utils::setLogSink({}); }

    /// A file whose root has this name and two children.
    QString writeScene(const char* name)
    {
        const NodeRef root(osg::Node::create());
        osg::setName(root.get(), name);
        root->addChild(osg::makeNodeFor(geometryOf(fullMesh())));
        root->addChild(osg::Node::create());
        written(root);
        return path();
    }

    void writeBytes(const QByteArray& bytes) const
    {
        QFile file(path());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }

    template <class Job>
    QStringList run(Job& job)
    {
        SignalLog log;
        log.watch(job);
        job.run();
        return log.lines;
    }

    static QStringList runThatEndsWith(int state)
    {
        return {QStringLiteral("starting"), QStringLiteral("started"), QStringLiteral("finished %1").arg(state)};
    }

    QStringList logged;
};

TEST_F(OsbLoaderJobTest, HasNothingBeforeItsRun)
{
    znOsbLoaderJob job(writeScene("Getriebe"));
    EXPECT_EQ(job.getState(), JobWaiting);
    EXPECT_FALSE(job.getLoadedNode());
    EXPECT_TRUE(job.parent() == nullptr);
    EXPECT_TRUE(osg::livingContainers().empty());
}

TEST_F(OsbLoaderJobTest, LoadsBeforeRunReturnsWithItsSignalsInOrder)
{
    znOsbLoaderJob job(writeScene("Getriebe"));
    EXPECT_EQ(run(job), runThatEndsWith(0));
    EXPECT_EQ(job.getState(), JobSucceeded);
    EXPECT_EQ(job.getErrorText(), QString());
    ASSERT_TRUE(job.getLoadedNode());
    EXPECT_STREQ(osg::getName(job.getLoadedNode()), "Getriebe");
    EXPECT_EQ(job.getLoadedNode()->getNChildren(), 2u);
    EXPECT_TRUE(logged.empty());
}

TEST_F(OsbLoaderJobTest, TheNodeIsThereInASlotOnFinished)
{
    znOsbLoaderJob job(writeScene("Getriebe"));
    QString name;
    QObject::connect(&job, &znAbstractJob::finished,
                     [&] { name = QString::fromUtf8(osg::getName(job.getLoadedNode())); });
    job.run();
    EXPECT_EQ(name, QStringLiteral("Getriebe"));
}

TEST_F(OsbLoaderJobTest, AMissingFileIsAFailureThatNamesIt)
{
    znOsbLoaderJob job(path("nowhere.osb"));
    EXPECT_EQ(run(job), runThatEndsWith(1));
    EXPECT_EQ(job.getState(), JobFailed);
    EXPECT_FALSE(job.getLoadedNode());
    EXPECT_TRUE(job.getErrorText().startsWith(path("nowhere.osb"))) << job.getErrorText().toStdString();
    EXPECT_EQ(logged, QStringList(job.getErrorText()));
}

TEST_F(OsbLoaderJobTest, ADamagedFileLeavesNothingAlive)
{
    writeScene("Getriebe");
    const std::vector<std::byte> whole = contentOf(path());
    writeBytes(QByteArray(reinterpret_cast<const char*>(whole.data()), static_cast<int>(whole.size() - 40)));
    znOsbLoaderJob job(path());
    EXPECT_EQ(run(job), runThatEndsWith(1));
    EXPECT_FALSE(job.getLoadedNode());
    EXPECT_TRUE(job.getErrorText().startsWith(path())) << job.getErrorText().toStdString();
    EXPECT_TRUE(osg::livingContainers().empty());
}

TEST_F(OsbLoaderJobTest, AFolderIsAFailure)
{
    znOsbLoaderJob job(QFileInfo(path()).path());
    EXPECT_EQ(run(job), runThatEndsWith(1));
    EXPECT_FALSE(job.getErrorText().isEmpty());
}

TEST_F(OsbLoaderJobTest, RunAgainAfterAFailureClearsItsText)
{
    znOsbLoaderJob job(path());
    EXPECT_EQ(run(job), runThatEndsWith(1));
    writeScene("Nachgereicht");
    EXPECT_EQ(run(job), runThatEndsWith(0));
    EXPECT_EQ(job.getErrorText(), QString());
    EXPECT_STREQ(osg::getName(job.getLoadedNode()), "Nachgereicht");
}

TEST_F(OsbLoaderJobTest, RunAgainGivesTheOldNodeUp)
{
    znOsbLoaderJob job(writeScene("alt"));
    job.run();
    const std::size_t ofOneTree = osg::livingContainerCount();
    EXPECT_GT(ofOneTree, 2u);
    writeScene("neu");
    EXPECT_EQ(run(job), runThatEndsWith(0));
    EXPECT_STREQ(osg::getName(job.getLoadedNode()), "neu");
    EXPECT_EQ(osg::livingContainerCount(), ofOneTree);
}

TEST_F(OsbLoaderJobTest, AFailedSecondRunHasNoNode)
{
    znOsbLoaderJob job(writeScene("alt"));
    job.run();
    writeBytes("no scene at all");
    EXPECT_EQ(run(job), runThatEndsWith(1));
    EXPECT_FALSE(job.getLoadedNode());
    EXPECT_TRUE(osg::livingContainers().empty());
}

TEST_F(OsbLoaderJobTest, TheNodeDiesWithTheJobUnlessSomebodyHoldsIt)
{
    NodeRef kept;
    {
        znOsbLoaderJob job(writeScene("behalten"));
        job.run();
        kept = job.getLoadedNode();
        EXPECT_EQ(kept->getRefCount(), 2);
    }
    EXPECT_EQ(kept->getRefCount(), 1);
    EXPECT_STREQ(osg::getName(kept.get()), "behalten");
    kept = osg::NodePtr();
    EXPECT_TRUE(osg::livingContainers().empty());
}

TEST_F(OsbLoaderJobTest, AbortDuringTheLoadChangesNothing)
{
    znOsbLoaderJob job(writeScene("Getriebe"));
    QObject::connect(&job, &znAbstractJob::started, &job, &znAbstractJob::abort);
    EXPECT_EQ(run(job), runThatEndsWith(0));
    EXPECT_TRUE(job.getLoadedNode());
}

TEST_F(OsbLoaderJobTest, AbortWhileItWaitsInAQueueEndsItUnloaded)
{
    znJobQueue queue;
    znOsbLoaderJob job(writeScene("Getriebe"));
    SignalLog log;
    log.watch(job);
    queue.addJob(&job);
    job.abort();
    EXPECT_EQ(log.lines, QStringList(QStringLiteral("finished 1")));
    EXPECT_FALSE(job.getLoadedNode());
}

TEST_F(OsbLoaderJobTest, IsDeletedByItsOwnFinishedHandler)
{
    auto* job = new znOsbLoaderJob(writeScene("Getriebe"));
    QPointer<znOsbLoaderJob> alive(job);
    QSignalSpy destroyed(job, &QObject::destroyed);
    QObject::connect(job, &znAbstractJob::finished, [job] { job->deleteLater(); });
    job->run();
    EXPECT_TRUE(alive && destroyed.wait(10000));
    EXPECT_TRUE(osg::livingContainers().empty());
}

TEST_F(OsbLoaderJobTest, ASubclassMayHoldTheEndBack)
{
    HoldingJob job(writeScene("Getriebe"));
    EXPECT_EQ(run(job), runThatEndsWith(3));
    EXPECT_EQ(job.stateAfterTheBase, JobSucceeded);
    EXPECT_TRUE(job.getLoadedNode());
}

TEST_F(OsbLoaderJobTest, AFailureReachesTheSubclassAsStateOne)
{
    HoldingJob job(path("nowhere.osb"));
    EXPECT_EQ(run(job), runThatEndsWith(3));
    EXPECT_EQ(job.stateAfterTheBase, JobFailed);
}

} // namespace
