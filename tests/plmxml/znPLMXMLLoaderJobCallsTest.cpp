#include "plmxml/znPLMXMLLoaderJob.h"

#include "host/znJobProcessing/znManagedJobQueue.h"
#include "standalone/znKernel/LoadedGeometries.h"
#include "standalone/znUtils/CallTrace.h"
#include "tests/plmxml/LoaderJobFixture.h"
#include "tests/support/LoadRecorder.h"

#include <QTest>

namespace
{

using testing::ElementsAre;

TEST_F(PLMXMLLoaderJobTest, TheHostIsToldWhatItNeedsToKnowInOrder)
{
    make(documentOf({}));
    std::vector<std::string> calls;
    {
        const zn::CallTrace trace([&](const std::string& call) {
            const std::string name = call.substr(0, call.find("::"));
            if (name == "znOSGWidget" || name == "znController" || name == "znTexSearch" ||
                name == "znReferenceInterface")
                calls.push_back(call);
        });
        run();
    }
    const std::string file = path(QStringLiteral("car.plmxml")).toStdString();
    const std::string node = "node " + std::to_string(tree->getContainerId()) + " 'car'";
    EXPECT_THAT(calls, ElementsAre("znOSGWidget::cancelAntialiasing()", "znController::setBusy(true, false)",
                                   "znTexSearch::setCurrentFile('" + file + "')",
                                   "znReferenceInterface::notifyReferences(" + node + ", 6, 0)",
                                   "znReferenceInterface::notifyReferences(" + node + ", 9, 0)",
                                   "znTexSearch::clearCurrentFile()", "znController::setBusy(false, false)"));
}

TEST_F(PLMXMLLoaderJobTest, TheHostHearsOfTheTreeBeforeTheJobHasItsState)
{
    make(documentOf({}));
    std::vector<znCADFileTypes::JobState> states;
    const zn::CallTrace trace([&](const std::string& call) {
        if (call.starts_with("znReferenceInterface::notifyReferences(") && call.ends_with(", 9, 0)"))
            states.push_back(job->getState());
    });
    run();
    EXPECT_THAT(states, ElementsAre(znCADFileTypes::JobRunning));
}

TEST_F(PLMXMLLoaderJobTest, WhenAllPartsHaveEndedTheirQueueRests)
{
    writePart(QStringLiteral("a.stp"), {"wheel"});
    make(documentOf({"a.stp"}));
    run();
    auto* const queue = job->findChild<znManagedJobQueue*>();
    ASSERT_TRUE(queue);
    queue->addJob(makeStepJob(line("write", QStringLiteral("late"), "x")).release());
    QTest::qWait(200);
    EXPECT_FALSE(has(QStringLiteral("late")));
    queue->startProcessing();
    EXPECT_TRUE(waitUntil([&] { return has(QStringLiteral("late")); }));
}

TEST_F(PLMXMLLoaderJobTest, TheFolderOfThePreferencesTakesConvertedFiles)
{
    ASSERT_TRUE(QDir().mkpath(path(QStringLiteral("preferred ä"))));
    m_session.preferences().set("FileIO tmp path", boost::any(path(QStringLiteral("preferred ä"))), true);
    writePart(QStringLiteral("a.stp"), {"wheel"});
    EXPECT_EQ(folderOfConverted("a.stp"), path(QStringLiteral("preferred ä")));
}

TEST_F(PLMXMLLoaderJobTest, WithoutAPreferenceConvertedFilesGoToTheTemporaryFolder)
{
    set("files.temporaryFolder", path(QStringLiteral("temporary ä")));
    ASSERT_TRUE(QDir().mkpath(path(QStringLiteral("temporary ä"))));
    writePart(QStringLiteral("a.stp"), {"wheel"});
    EXPECT_EQ(folderOfConverted("a.stp"), path(QStringLiteral("temporary ä")));
}

TEST_F(PLMXMLLoaderJobTest, TheChildQueueIsSetUpWhenTheJobIsMade)
{
    std::vector<std::string> calls;
    {
        const zn::CallTrace trace([&](const std::string& call) { calls.push_back(call); });
        make(documentOf({}));
    }
    EXPECT_THAT(calls, testing::IsSupersetOf({"znManagedJobQueue::setDefaultPriority(2)",
                                              "znJobQueue::setDeleteFinishedOrFailedJobs(true)"}));
}

TEST_F(PLMXMLLoaderJobTest, TheChildQueueStartsOnEveryRoadButThatOfAMissingDocument)
{
    const auto starts = [this](const QString& file) {
        int count = 0;
        make(file);
        const zn::CallTrace trace(
            [&](const std::string& call) { count += call == "znJobQueue::startProcessing()" ? 1 : 0; });
        run();
        return count;
    };
    writeTriangle(QStringLiteral("a.obj"));
    EXPECT_EQ(starts(documentOf({})), 1);
    EXPECT_EQ(starts(documentOf({"a.obj"})), 1);
    EXPECT_EQ(starts(documentOf({"none.stp"})), 1);
    EXPECT_EQ(starts(write(QStringLiteral("other.plmxml"), "<Other/>")), 1);
    EXPECT_EQ(starts(path(QStringLiteral("none.plmxml"))), 0);
    set("import.PLMXML.referencedFiles", QStringLiteral("off"));
    EXPECT_EQ(starts(documentOf({"a.obj"})), 1);
}

TEST_F(PLMXMLLoaderJobTest, TheHostIsAskedWhetherToReadPartsAndWhatEachExistingOneIs)
{
    writeTriangle(QStringLiteral("a.obj"));
    make(documentOf({"a.obj", "none.stp"}));
    std::vector<std::string> calls;
    {
        const zn::CallTrace trace([&](const std::string& call) {
            if (call.find("znImportOptions") == 0 || call.find("znFileIOHelper") == 0 || call.find("znFileIO::") == 0)
                calls.push_back(call);
        });
        run();
    }
    const std::string file = path(QStringLiteral("a.obj")).toStdString();
    const osg::NodePtr reference = tree->getChild(0)->getChild(0)->getChild(0);
    const std::string node = "node " + std::to_string(reference->getContainerId()) + " 'a'";
    EXPECT_THAT(calls, ElementsAre("znImportOptions('PLMXML', false, true)",
                                   "znFileIOHelper::getFileTypeByFileName('" + file + "')",
                                   "znFileIOHelper::isPtxFile('" + file + "')",
                                   "znFileIO::load(['" + file + "'], " + node + ", false, false, false)",
                                   "znFileIO::getLoadedGeometriesList()"));
}

TEST_F(PLMXMLLoaderJobTest, AllPartFilesAreFoundBeforeTheFirstIsLoaded)
{
    writeTriangle(QStringLiteral("a.obj"));
    writePart(QStringLiteral("b.stp"), {"wheel"});
    writeTriangle(QStringLiteral("c.obj"));
    EXPECT_EQ(import({"a.obj", "b.stp", "c.obj"}), znCADFileTypes::JobSucceeded);
    std::vector<std::string> begins;
    for (const std::string& line : lines)
        begins.push_back(line.substr(0, line.find(' ')));
    ASSERT_EQ(begins.size(), 16u);
    begins.resize(9);
    EXPECT_THAT(std::vector<std::string>(begins.begin() + 1, begins.begin() + 5),
                testing::UnorderedElementsAre("found", "found", "found", "converter"));
    EXPECT_THAT(std::vector<std::string>(begins.begin() + 5, begins.end()),
                ElementsAre("loading", "loaded", "loading", "loaded"));
    // Conversions run when all that the host reads is read.
    EXPECT_EQ(lines[9], "load of b.stp");
}

TEST_F(PLMXMLLoaderJobTest, TheHostIsAskedForOneFileBelowItsReference)
{
    const LoadRecorder recorder(m_session);
    writeTriangle(QStringLiteral("a.obj"));
    EXPECT_EQ(import({"a.obj"}), znCADFileTypes::JobSucceeded);
    const LoadRecorder::Request load = recorder.latest();
    EXPECT_EQ(load.files, std::vector<QString>{path(QStringLiteral("a.obj"))});
    EXPECT_EQ(load.parentId, tree->getChild(0)->getChild(0)->getChild(0)->getContainerId());
    EXPECT_FALSE(load.sceneWasEmpty || load.merge || load.select);
}

TEST_F(PLMXMLLoaderJobTest, TheJobRunsFromTheDocumentOnAndTellsNoProgress)
{
    writeTriangle(QStringLiteral("a.obj"));
    make(documentOf({"a.obj"}));
    QSignalSpy progress(job.get(), &znAbstractJob::progressChanged);
    std::vector<int> states;
    QObject::connect(job.get(), &znAbstractJob::started, job.get(), [&] { states.push_back(job->getState()); });
    QObject::connect(job.get(), &znPLMXMLLoaderJob::foundChildFile, job.get(),
                     [&] { states.push_back(job->getState()); });
    run();
    EXPECT_THAT(states, ElementsAre(znCADFileTypes::JobWaiting, znCADFileTypes::JobRunning));
    EXPECT_EQ(progress.count(), 0);
}

} // namespace
