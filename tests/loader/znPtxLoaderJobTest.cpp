#include "host/znKernel/znFileIOHelper.h"
#include "scene/EditAudit.h"
#include "standalone/znKernel/UserInterfaceState.h"
#include "standalone/znUtils/CallTrace.h"
#include "tests/loader/LoaderTest.h"

#include <stdexcept>

using namespace znCADFileTypes;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

namespace
{

const char* const replaced = "Replace stored reference!\n";

class PtxLoaderJobTest : public LoaderTest
{
protected:
    void TearDown() override
    {
        m_job.reset();
        LoaderTest::TearDown();
    }

    /// What the job calls of the host's front end, mixed with its signals.
    static std::vector<std::string> runTraced(znPtxLoaderJob& job)
    {
        std::vector<std::string> lines;
        QObject context;
        const auto note = [&lines](const char* signal) { return [&lines, signal] { lines.emplace_back(signal); }; };
        QObject::connect(&job, &znAbstractJob::started, &context, note("started"));
        QObject::connect(&job, &znAbstractProcessingJob::processingFinished, &context, note("processingFinished"));
        const zn::CallTrace trace([&lines](const std::string& call) {
            for (const char* known : {"znOSGWidget", "znController", "znTexSearch", "znNodeUtils::setFileInfo"})
                if (call.rfind(known, 0) == 0)
                    lines.push_back(call);
        });
        job.run();
        return lines;
    }

    /// Loads an assembly whose root names `stored`, as the conversion of `original`, and gives what was printed.
    std::string printedFor(const QString& stored, const QString& original)
    {
        const Root root(makeReference("engine", stored));
        const QString file = writeScene(QStringLiteral("engine.osb"), root.get());
        m_job = std::make_unique<znPtxLoaderJob>(file, original);
        testing::internal::CaptureStdout();
        m_job->run();
        std::fflush(stdout);
        const std::string printed = testing::internal::GetCapturedStdout();
        EXPECT_EQ(m_job->getState(), JobSucceeded);
        return printed;
    }
    std::string storedPath() const { return referenceOf(m_job->getLoadedNode())->getSourceFile()->getPath(); }

    std::unique_ptr<znPtxLoaderJob> m_job;
};

TEST_F(PtxLoaderJobTest, AFileWithoutPartsIsLoaded)
{
    addGroup(assembly(), "body");
    const auto job = makeLoader();
    EXPECT_EQ(job->getOriginalFile(), originalFile());
    EXPECT_EQ(job->getState(), JobWaiting);
    LoaderLog log(*job);
    EXPECT_EQ(log.run(), texts({"starting", "started", "processed", "finished 0"}));
    EXPECT_THAT(childNames(job->getLoadedNode()), ElementsAre("body"));
    EXPECT_EQ(log.seconds, -1);
}

TEST_F(PtxLoaderJobTest, TheHostIsToldOfTheLoadFromBeginningToEnd)
{
    const auto job = makeLoader();
    const std::string file = path(QStringLiteral("out put/engine.osb")).toStdString();
    std::vector<std::string> lines = runTraced(*job);
    ASSERT_EQ(lines.size(), 8u);
    EXPECT_THAT(lines[4],
                testing::MatchesRegex("znNodeUtils::setFileInfo\\(node [0-9]+ 'engine', '.*/engine.stp', null\\)"));
    lines.erase(lines.begin() + 4);
    EXPECT_THAT(lines, ElementsAre("started", "znOSGWidget::cancelAntialiasing()", "znController::setBusy(true, false)",
                                   "znTexSearch::setCurrentFile('" + file + "')", "znTexSearch::clearCurrentFile()",
                                   "znController::setBusy(false, false)", "processingFinished"));
}

TEST_F(PtxLoaderJobTest, TheHostIsBusyAndSearchesInTheFoldersFileWhileItLoads)
{
    refer("bolt", writePart(QStringLiteral("bolt.stp"), {"head"}));
    const auto job = makeLoader();
    zn::kernel::UserInterfaceState seen;
    QObject::connect(job.get(), &znPtxLoaderJob::childOsbLoaderJobFinished,
                     [&] { seen = m_session.state<zn::kernel::UserInterfaceState>(); });
    job->run();
    EXPECT_TRUE(seen.busy);
    EXPECT_FALSE(seen.inputBlocked);
    EXPECT_EQ(seen.cancelledRefinements, 1u);
    EXPECT_EQ(seen.textureBase, path(QStringLiteral("out put/engine.osb")).toStdString());
    EXPECT_FALSE(m_session.state<zn::kernel::UserInterfaceState>().busy);
    EXPECT_EQ(m_session.state<zn::kernel::UserInterfaceState>().textureBase, "");
}

TEST_F(PtxLoaderJobTest, AFileThatCannotBeLoadedEndsTheJobAtOnce)
{
    const QString file = path(QStringLiteral("nowhere.osb"));
    znPtxLoaderJob job(file, originalFile());
    EXPECT_THAT(runTraced(job),
                ElementsAre("started", "znOSGWidget::cancelAntialiasing()", "znController::setBusy(true, false)",
                            "znTexSearch::setCurrentFile('" + file.toStdString() + "')",
                            "znTexSearch::clearCurrentFile()", "znController::setBusy(false, false)",
                            "processingFinished"));
    EXPECT_EQ(job.getState(), JobFailed);
    EXPECT_FALSE(job.getLoadedNode());
    EXPECT_TRUE(job.getErrorText().contains(file)) << job.getErrorText().toStdString();
}

TEST_F(PtxLoaderJobTest, TheEndIsAnnouncedOnceAlsoByASecondRun)
{
    const auto job = makeLoader();
    LoaderLog log(*job);
    log.run();
    EXPECT_EQ(log.run(), texts({"starting", "started", "processed", "finished 0", "starting", "started", "processed",
                                "finished 0"}));
}

TEST_F(PtxLoaderJobTest, TheRootTellsTheCadFileThatItCameFrom)
{
    const auto job = makeLoader();
    job->run();
    EXPECT_EQ(znFileIOHelper::getFileNameFromFileInfo(job->getLoadedNode()), originalFile());
}

TEST_F(PtxLoaderJobTest, AnotherStoredPathIsReplacedAndToldOnce)
{
    const osg::EditAudit audit;
    EXPECT_EQ(printedFor(QStringLiteral("/elsewhere/engine.stp"), QStringLiteral("/here/engine.prt")), replaced);
    EXPECT_EQ(storedPath(), "/here/engine.prt");
    const auto source = referenceOf(m_job->getLoadedNode())->getSourceFile();
    EXPECT_THAT(audit.brackets(), Contains(osg::EditAudit::Record{source->getContainerId(), "FileReference",
                                                                  osg::FileReferenceBase::PathFieldMask}));
    EXPECT_THAT(audit.idleBrackets(), IsEmpty());
}

TEST_F(PtxLoaderJobTest, TheSameStoredPathStaysWithoutAWord)
{
    EXPECT_EQ(printedFor(QStringLiteral("/here/ä/engine.prt"), QStringLiteral("/here/ä/engine.prt")), "");
    EXPECT_EQ(storedPath(), "/here/ä/engine.prt");
}

TEST_F(PtxLoaderJobTest, SeparatorsOfTheCadFileAreNoDifference)
{
    EXPECT_EQ(printedFor(QStringLiteral("D:/cad/engine.prt"), QStringLiteral("D:\\cad\\\\engine.prt")), "");
    EXPECT_EQ(storedPath(), "D:/cad/engine.prt");
}

TEST_F(PtxLoaderJobTest, SeparatorsOfTheStoredPathAreReplaced)
{
    EXPECT_EQ(printedFor(QStringLiteral("D:\\cad\\engine.prt"), QStringLiteral("D:\\cad\\engine.prt")), replaced);
    EXPECT_EQ(storedPath(), "D:/cad/engine.prt");
}

TEST_F(PtxLoaderJobTest, ARootThatIsNoReferenceIsLeftAlone)
{
    const Root root(osg::makeNodeFor(osg::Group::create()));
    znPtxLoaderJob job(writeScene(QStringLiteral("engine.osb"), root.get()), originalFile());
    testing::internal::CaptureStdout();
    job.run();
    std::fflush(stdout);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(job.getState(), JobSucceeded);
}

TEST_F(PtxLoaderJobTest, AReferenceWithoutAFileIsLeftAlone)
{
    const Root root(osg::makeNodeFor(osg::ExtReferenceBase::create()));
    znPtxLoaderJob job(writeScene(QStringLiteral("engine.osb"), root.get()), originalFile());
    testing::internal::CaptureStdout();
    job.run();
    std::fflush(stdout);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_FALSE(referenceOf(job.getLoadedNode())->getSourceFile());
}

TEST_F(PtxLoaderJobTest, AnExceptionInTheBaseLoadStillEndsTheRunInOrder)
{
    // The base logs a file that cannot be loaded, after it has set the state.
    znPtxLoaderJob job(path(QStringLiteral("nowhere.osb")), originalFile());
    m_session.setLogSink([](const char*) { throw std::runtime_error("the log is full"); });
    LoaderLog log(job);
    std::vector<std::string> lines = runTraced(job);
    m_session.setLogSink({});
    ASSERT_EQ(lines.size(), 7u);
    lines.erase(lines.begin(), lines.begin() + 4);
    EXPECT_THAT(lines, ElementsAre("znTexSearch::clearCurrentFile()", "znController::setBusy(false, false)",
                                   "processingFinished"));
    EXPECT_EQ(log.lines(), texts({"starting", "started", "processed", "finished 1"}));
    EXPECT_EQ(job.getErrorText(), QStringLiteral("the log is full"));
}

TEST_F(PtxLoaderJobTest, TheHoldOnTheBaseLoadIsGivenUpHoweverItEnds)
{
    struct SeenLoaderJob : znPtxLoaderJob {
        using znPtxLoaderJob::znPtxLoaderJob;
        bool holds() const { return m_holdFinish; }
    };
    SeenLoaderJob good(writeScene(QStringLiteral("engine.osb"), assembly()), originalFile());
    good.run();
    EXPECT_FALSE(good.holds());
    SeenLoaderJob job(path(QStringLiteral("nowhere.osb")), originalFile());
    bool held = false;
    m_session.setLogSink([&](const char*) {
        held = job.holds();
        throw std::runtime_error("the log is full");
    });
    job.run();
    m_session.setLogSink({});
    EXPECT_TRUE(held);
    EXPECT_FALSE(job.holds());
}

TEST_F(PtxLoaderJobTest, AfterAnExceptionInTheBaseLoadTheJobRunsAgain)
{
    const QString file = path(QStringLiteral("late.osb"));
    znPtxLoaderJob job(file, originalFile());
    m_session.setLogSink([](const char*) { throw std::runtime_error("the log is full"); });
    job.run();
    m_session.setLogSink({});
    writeScene(QStringLiteral("late.osb"), assembly());
    LoaderLog log(job);
    EXPECT_EQ(log.run(), texts({"starting", "started", "finished 0", "processed"}));
}

TEST_F(PtxLoaderJobTest, AnExceptionWhileChildrenAreMadeCarriesTheRunningStateIntoTheEnd)
{
    refer("bolt", writePart(QStringLiteral("bolt.stp"), {"head"}));
    const auto job = makeLoader();
    QObject::connect(job.get(), &znPtxLoaderJob::startingChildPtxImport,
                     [](const QString&) { throw std::runtime_error("no more parts"); });
    LoaderLog log(*job);
    const std::vector<std::string> lines = runTraced(*job);
    EXPECT_EQ(lines.back(), "processingFinished");
    EXPECT_THAT(log.lines(), Contains(QStringLiteral("finished 4")));
    EXPECT_EQ(log.count(QStringLiteral("finished")), 1);
    EXPECT_FALSE(m_session.state<zn::kernel::UserInterfaceState>().busy);
    EXPECT_TRUE(job->getLoadedNode());
}

TEST_F(PtxLoaderJobTest, AListenerThatFailsAtTheEndFailsTheJobNotTheProgram)
{
    refer("bolt", writePart(QStringLiteral("bolt.stp"), {"head"}));
    const auto job = makeLoader();
    QObject::connect(job.get(), &znAbstractProcessingJob::processingFinished,
                     [] { throw std::runtime_error("no more ends"); });
    LoaderLog log(*job);
    job->run();
    EXPECT_EQ(job->getErrorText(), QStringLiteral("no more ends"));
    EXPECT_EQ(log.count(QStringLiteral("finished 1")), 1);
    EXPECT_EQ(log.count(QStringLiteral("finished")), 1);
    EXPECT_FALSE(m_session.state<zn::kernel::UserInterfaceState>().busy);
    EXPECT_THAT(namesBelow(*job, 0), ElementsAre("head"));
}

TEST_F(PtxLoaderJobTest, OfTwoExceptionsTheFirstOneCounts)
{
    refer("bolt", writePart(QStringLiteral("bolt.stp"), {"head"}));
    const auto job = makeLoader();
    QObject::connect(job.get(), &znPtxLoaderJob::startingChildPtxImport,
                     [](const QString&) { throw std::runtime_error("no more parts"); });
    QObject::connect(job.get(), &znAbstractProcessingJob::processingFinished,
                     [] { throw std::runtime_error("no more ends"); });
    job->run();
    EXPECT_EQ(job->getErrorText(), QStringLiteral("no more parts"));
    EXPECT_FALSE(m_session.state<zn::kernel::UserInterfaceState>().busy);
}

TEST_F(PtxLoaderJobTest, ANodeThatAListenerTakesOutIsFilledWhereItIs)
{
    refer("bolt", writePart(QStringLiteral("bolt.stp"), {"head"}));
    refer("other bolt", path(QStringLiteral("bolt.stp")));
    const auto job = makeLoader();
    QObject::connect(job.get(), &znPtxLoaderJob::childOsbLoaderJobCreated, [&job] {
        const osg::NodePtr root = job->getLoadedNode();
        root->subChild(root->getChild(0));
    });
    job->run();
    EXPECT_EQ(job->getState(), JobSucceeded);
    EXPECT_EQ(job->getLoadedNode()->getNChildren(), 1u);
    EXPECT_THAT(namesBelow(*job, 0), ElementsAre("head"));
}

} // namespace
