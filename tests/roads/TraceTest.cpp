// What the library asks of the host on a whole road, call by call.

#include "files/scenefile/SceneFile.h"
#include "host/znUtils/znFile.h"
#include "importer/Importer.h"
#include "standalone/startup/StandaloneSession.h"
#include "standalone/znUtils/CallTrace.h"

#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTimer>

#include <gmock/gmock.h>

namespace
{

class TraceTest : public testing::Test
{
protected:
    QString write(const QString& name, const QByteArray& content)
    {
        QFile file(folder.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        return file.fileName();
    }

    /// The calls of an import of `file`. Folders and what is new in each run stand as words in them.
    std::vector<std::string> callsOfImport(const QString& file)
    {
        QEventLoop loop;
        zn::Importer importer(session);
        QObject::connect(&importer, &zn::Importer::finished, [&](const zn::ImportResult& end) {
            state = end.state;
            loop.quit();
        });
        QTimer::singleShot(30000, &loop, &QEventLoop::quit);
        std::vector<std::string> calls;
        const zn::CallTrace trace([&](const std::string& call) { calls.push_back(lasting(call)); });
        importer.import({file});
        loop.exec();
        return calls;
    }

    std::string lasting(const std::string& call) const
    {
        static const QRegularExpression hash(QStringLiteral("Rad-[0-9a-f]{10}"));
        static const QRegularExpression id(QStringLiteral("node [0-9]+,"));
        return QString::fromStdString(call)
            .replace(folder.path(), QStringLiteral("<folder>"))
            .replace(QString::fromStdString(znFile::getTmpDir()), QStringLiteral("<temporary>"))
            .replace(hash, QStringLiteral("Rad-<hash>"))
            .replace(id, QStringLiteral("node <id>,"))
            .toStdString();
    }

    void useScriptedConverter()
    {
        ASSERT_FALSE(session.settings().set(QStringLiteral("converter.program"), QString::fromUtf8(ZN_SCRIPTED_CHILD)));
        ASSERT_FALSE(session.settings().set(QStringLiteral("processes.most"), QStringLiteral("2")));
    }

    QTemporaryDir folder{QDir::tempPath() + QStringLiteral("/trace äö XXXXXX")};
    zn::StandaloneSession session;
    znCADFileTypes::JobState state = znCADFileTypes::JobWaiting;
};

/// From the queue that takes the job to the command that it launches.
const std::vector<std::string> callsUpToTheLaunch = {
    "znFileIOHelper::isPtxFile('<folder>/Rad.stp')",
    "znJobQueue::setDeleteFinishedOrFailedJobs(true)",
    "znFileIOHelper::isAssemblyFile('<folder>/Rad.stp')",
    "znPreferences::getData()",
    "znJobQueue::addJob('znPtxConverterJob')",
    "znJobQueue::startProcessing()",
    "znFileIOHelper::getFileTypeByFileName('<folder>/Rad.stp')",
    "znImportOptions('Step', false, true)",
    "znParallelJobManager::getMaxNumProcesses()",
    "znPtxHelper::createProcessCommand('<folder>/Rad.stp', true, '<temporary>')",
};

/// From the loader job to the first question of the optimisation, whose own calls are not told here.
const std::vector<std::string> callsOfTheLoad = {
    "znManagedJobQueue::setDefaultPriority(2)",
    "znJobQueue::setDeleteFinishedOrFailedJobs(true)",
    "znJobQueue::addJob('znPtxLoaderJob')",
    "znJobQueue::startProcessing()",
    "znOSGWidget::cancelAntialiasing()",
    "znController::setBusy(true, false)",
    "znTexSearch::setCurrentFile('<temporary>/Rad-<hash>.osb')",
    "znNodeUtils::setFileInfo(node <id>, '<folder>/Rad.stp', null)",
    "znFileIOHelper::isAssemblyFile('<folder>/Rad.stp')",
    "znParallelJobManager::getMaxNumProcesses()",
    "znFileIOHelper::getFileTypeByFileName('<folder>/Rad.stp')",
    "znImportOptions('Step', false, true)",
    "znTexSearch::clearCurrentFile()",
    "znController::setBusy(false, false)",
    "znFileIOHelper::isPtxFile('<folder>/Rad.stp')",
    "znJobQueue::addJob('znPtxTreeOptimizationJob')",
    "znFileIO::getUseGSK()",
};

TEST_F(TraceTest, TheFileLoaderAsksForLocksThenForAnEmptySceneThenLoads)
{
    const auto calls = callsOfImport(write(QStringLiteral("Platte.obj"), "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n"));
    EXPECT_EQ(state, znCADFileTypes::JobSucceeded);
    EXPECT_THAT(calls,
                testing::ElementsAre(
                    "znFileIOHelper::isPtxFile('<folder>/Platte.obj')",
                    "znFileIOHelper::isPLMXMLFile('<folder>/Platte.obj')", "znScenegraph::getRoot()",
                    "znTypeConverter::convertNode(node 2 'Scene')", "znJobQueue::setDeleteFinishedOrFailedJobs(true)",
                    "znJobQueue::addJob('znFileLoaderJob')", "znJobQueue::startProcessing()",
                    "znNodeUtils::getLock(node 2 'Scene')", "znNodeUtils::hasLockedParent(node 2 'Scene')",
                    "znNodeUtils::isUneditedAssetRoot(node 2 'Scene')", "znScenegraph::isEmpty()",
                    "znFileIO::load(['<folder>/Platte.obj'], node 2 'Scene', true, false, false)",
                    "znFileIO::getLoadedGeometriesList()"));
}

TEST_F(TraceTest, TheConverterBuildsItsCommandBeforeTheConvertedFileIsLoaded)
{
    useScriptedConverter();
    const osg::RefPtr<osg::NodePtr> root(osg::Node::create());
    root->addChild(osg::Node::create()); // a tree without a place has failed
    ASSERT_TRUE(osg::scenefile::writeSceneFile(root, folder.filePath(QStringLiteral("made.osb"))));
    const QByteArray script = "output-from \"" + folder.filePath(QStringLiteral("made.osb")).toUtf8() + "\"\n";
    const auto calls = callsOfImport(write(QStringLiteral("Rad.stp"), script));
    EXPECT_EQ(state, znCADFileTypes::JobSucceeded);
    std::vector<std::string> expected = callsUpToTheLaunch;
    expected.insert(expected.end(), callsOfTheLoad.begin(), callsOfTheLoad.end());
    ASSERT_GT(calls.size(), expected.size());
    EXPECT_EQ(std::vector<std::string>(calls.begin(), calls.begin() + static_cast<std::ptrdiff_t>(expected.size())),
              expected);
}

TEST_F(TraceTest, AFailedConversionAsksForADescriptionLast)
{
    useScriptedConverter();
    const auto calls = callsOfImport(write(QStringLiteral("Rad.stp"), "exit 7\n"));
    EXPECT_EQ(state, znCADFileTypes::JobFailed);
    std::vector<std::string> expected = callsUpToTheLaunch;
    expected.push_back("znPtxHelper::getProcessErrorDescription(7, '<temporary>/Rad-<hash>.osb.log')");
    EXPECT_EQ(calls, expected);
}

} // namespace
