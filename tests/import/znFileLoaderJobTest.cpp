#include "host/OSGSystem/FieldContainerFactory.h"
#include "host/OSGSystem/Geometry.h"
#include "host/znJobProcessing/znJobQueue.h"
#include "host/znKernelServices/znReferenceService.h"
#include "scene/EditAudit.h"
#include "standalone/znKernel/LoadedGeometries.h"
#include "standalone/znOpenSGUtils/NodePredicates.h"
#include "standalone/znUtils/CallTrace.h"
#include "tests/import/FileLoaderTest.h"

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using znCADFileTypes::JobFailed;
using znCADFileTypes::JobState;
using znCADFileTypes::JobSucceeded;

namespace
{

using FileLoaderJob = FileLoaderTest;

TEST_F(FileLoaderJob, TellsItsFileAndHasNoNodeBeforeItRuns)
{
    const Job job = makeJob(m_file, wrapped(m_part));
    EXPECT_EQ(job->getFile(), m_file);
    EXPECT_FALSE(job->getLoadedNode());
    EXPECT_EQ(static_cast<int>(job->getState()), 2);
}

TEST_F(FileLoaderJob, GoesThroughAQueueFromStartToEnd)
{
    znJobQueue queue;
    auto* job = new znFileLoaderJob(m_file, wrapped(m_part), &queue);
    std::vector<std::string> signalsSeen;
    QObject::connect(job, &znAbstractJob::starting, [&] { signalsSeen.emplace_back("starting"); });
    QObject::connect(job, &znAbstractJob::started, [&] { signalsSeen.emplace_back("started"); });
    osg::NodePtr loaded;
    QObject::connect(job, &znAbstractJob::finished, [&](JobState state) {
        signalsSeen.emplace_back("finished " + std::to_string(state));
        loaded = job->getLoadedNode();
    });
    const QSignalSpy progress(job, &znAbstractJob::progressChanged);
    QSignalSpy empty(&queue, &znJobQueue::jobQueueEmpty);
    queue.addJob(job);
    queue.startProcessing();
    ASSERT_TRUE(empty.wait(20000));
    EXPECT_THAT(signalsSeen, ElementsAre("starting", "started", "finished 0"));
    EXPECT_EQ(progress.count(), 0);
    EXPECT_TRUE(loaded == m_part->getChild(0));
}

TEST_F(FileLoaderJob, AbortDoesNotTouchARun)
{
    znFileLoaderJob job(m_file, wrapped(m_part), nullptr);
    QSignalSpy finished(&job, &znAbstractJob::finished);
    job.run();
    job.abort();
    EXPECT_EQ(finished.count(), 0);
    ASSERT_TRUE(finished.wait(20000));
    EXPECT_EQ(job.getState(), JobSucceeded);
    EXPECT_EQ(m_part->getNChildren(), 1u);
}

TEST_F(FileLoaderJob, BelongsToItsParentObject)
{
    QObject parent;
    const auto* job = new znFileLoaderJob(m_file, zndNode(), &parent);
    EXPECT_EQ(job->parent(), &parent);
}

TEST_F(FileLoaderJob, EmitsItsTwoSignalsOnceOnEachRoad)
{
    const osg::NodePtr reference = addReference(m_root, "reference");
    leavesSplicedNodes("Größe 1");
    const auto emitted = [](DirectFileLoaderJob& job) {
        const QSignalSpy started(&job, &znAbstractJob::started);
        const QSignalSpy ended(&job, &znAbstractProcessingJob::processingFinished);
        job.process();
        return std::pair(started.count(), ended.count());
    };
    EXPECT_EQ(emitted(*makeJob(m_file, wrapped(m_part))), std::pair(1, 1));
    EXPECT_EQ(emitted(*makeJob(m_missing, wrapped(m_part))), std::pair(1, 1));
    EXPECT_EQ(emitted(*makeJob(m_file, wrapped(reference))), std::pair(1, 1));
    setSmartPath(reference, m_file);
    EXPECT_EQ(emitted(*makeJob(m_file, wrapped(reference))), std::pair(1, 1));
    const Job smart = makeJob(m_file, wrapped(m_part));
    smart->setImportAsSmartReference(true);
    EXPECT_EQ(emitted(*smart), std::pair(1, 1));
}

// The plain road

TEST_F(FileLoaderJob, PlainRoadHangsTheTreeBelowTheTarget)
{
    const Job job = load(m_file, wrapped(m_part));
    EXPECT_EQ(job->getState(), JobSucceeded);
    ASSERT_THAT(childNames(m_part), ElementsAre("Größe 1"));
    EXPECT_TRUE(job->getLoadedNode() == m_part->getChild(0));
    EXPECT_THAT(childNames(m_root), ElementsAre("part"));
    EXPECT_EQ(job->getErrorText(), QString());
}

TEST_F(FileLoaderJob, PlainRoadFailsWithoutATextOfItsOwn)
{
    testing::internal::CaptureStderr();
    const Job job = load(m_missing, wrapped(m_part));
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(job->getState(), JobFailed);
    EXPECT_FALSE(job->getLoadedNode());
    EXPECT_EQ(job->getErrorText(), QString());
    EXPECT_EQ(m_part->getNChildren(), 0u);
    EXPECT_THAT(m_log, ElementsAre(HasSubstr("missing.obj")));
}

TEST_F(FileLoaderJob, AFailedRunKeepsTheNodeOfAnEarlierOne)
{
    const Job job = load(m_file, wrapped(m_part));
    const osg::NodePtr first = job->getLoadedNode();
    QFile::remove(m_file);
    job->process();
    EXPECT_EQ(job->getState(), JobFailed);
    EXPECT_TRUE(job->getLoadedNode() == first);
}

TEST_F(FileLoaderJob, PlainRoadHandsTheLoadBehaviorOn)
{
    load(m_file, wrapped(m_part));
    EXPECT_TRUE(lastLoad().select);
    EXPECT_FALSE(lastLoad().merge);
    EXPECT_THAT(lastLoad().files, ElementsAre(m_file));
    EXPECT_EQ(lastLoad().parentId, m_part->getContainerId());
    const Job other = makeJob(m_file, wrapped(m_part));
    other->setLoadBehavior(false);
    other->process();
    EXPECT_FALSE(lastLoad().select);
    EXPECT_FALSE(lastLoad().merge);
}

TEST_F(FileLoaderJob, EmptinessOfTheSceneIsAskedBeforeTheLoad)
{
    m_root->subChild(m_part);
    load(m_file, wrapped(m_root));
    EXPECT_TRUE(lastLoad().sceneWasEmpty);
    EXPECT_EQ(m_root->getNChildren(), 1u);
    load(m_file, wrapped(m_root));
    EXPECT_FALSE(lastLoad().sceneWasEmpty);
}

// New smart references

TEST_F(FileLoaderJob, SmartRoadMakesALoadedReferenceBelowTheTarget)
{
    const QString file = writeTriangle(QStringLiteral("gear.v2.obj"));
    const Job job = makeJob(file, wrapped(m_part));
    job->setImportAsSmartReference(true);
    job->process();
    EXPECT_EQ(job->getState(), JobSucceeded);
    ASSERT_THAT(childNames(m_part), ElementsAre("gear"));
    const osg::NodePtr reference = m_part->getChild(0);
    EXPECT_TRUE(job->getLoadedNode() == reference);
    EXPECT_EQ(referenceCore(reference)->getSmartFile()->getPath(), file.toStdString());
    EXPECT_EQ(referenceCore(reference)->getState(), 2u);
    ASSERT_EQ(reference->getNChildren(), 1u);
    EXPECT_TRUE(osg::fcCast<osg::Geometry>(reference->getChild(0)->getCore()));
    EXPECT_THAT(lastLoad().files, IsEmpty());
}

TEST_F(FileLoaderJob, SmartRoadSucceedsAlsoWhenNothingCouldBeLoaded)
{
    const Job job = makeJob(m_missing, wrapped(m_part));
    job->setImportAsSmartReference(true);
    job->process();
    EXPECT_EQ(job->getState(), JobSucceeded);
    ASSERT_THAT(childNames(m_part), ElementsAre("missing"));
    EXPECT_TRUE(job->getLoadedNode() == m_part->getChild(0));
    EXPECT_EQ(m_part->getChild(0)->getNChildren(), 0u);
    EXPECT_THAT(m_log, ElementsAre(HasSubstr("missing.obj")));
}

TEST_F(FileLoaderJob, SmartRoadUsesTheServiceOfTheHost)
{
    struct Service final : znReferenceService {
        zndReferenceNode createReference(const zndNode& parent) override
        {
            asked.push_back(parent.getObjectId());
            return zndReferenceNode(result->getContainerId());
        }
        std::vector<std::uint64_t> asked;
        osg::NodePtr result;
    } service;
    service.result = addReference(m_root, "made before");
    m_session.setService<znReferenceService>(&service);
    const Job job = makeJob(m_file, wrapped(m_part));
    job->setImportAsSmartReference(true);
    job->process();
    EXPECT_THAT(service.asked, ElementsAre(m_part->getContainerId()));
    EXPECT_TRUE(job->getLoadedNode() == service.result);
    EXPECT_EQ(nameOf(service.result), "Größe 1");
    EXPECT_EQ(service.result->getNChildren(), 1u);
}

using FileLoaderJobDeathTest = FileLoaderTest;

TEST_F(FileLoaderJobDeathTest, SmartRoadDoesNotLookForAMissingService)
{
    m_session.removeService<znReferenceService>();
    const Job job = makeJob(m_file, wrapped(m_part));
    job->setImportAsSmartReference(true);
    EXPECT_DEATH(job->process(), "znKernelServiceFactory: couldn't find class '18znReferenceService'!");
}

// Refreshing a smart reference

TEST_F(FileLoaderJob, RefreshLoadsTheReferencesOwnFileAndTakesOnlyTheNameOfTheJobs)
{
    const osg::NodePtr reference = addReference(m_root, "old name");
    addGroup(reference, "old content");
    setSmartPath(reference, m_file);
    const Job job = makeJob(path(QStringLiteral("new name.v2.obj")), wrapped(reference));
    job->process();
    EXPECT_EQ(job->getState(), JobSucceeded);
    EXPECT_TRUE(job->getLoadedNode() == reference);
    EXPECT_EQ(nameOf(reference), "new name");
    ASSERT_EQ(reference->getNChildren(), 1u);
    EXPECT_TRUE(osg::fcCast<osg::Geometry>(reference->getChild(0)->getCore()));
    EXPECT_EQ(referenceCore(reference)->getSmartFile()->getPath(), m_file.toStdString());
    EXPECT_THAT(m_log, IsEmpty());
}

TEST_F(FileLoaderJob, RefreshIgnoresTheSettersOfTheJob)
{
    const osg::NodePtr reference = addReference(m_part, "reference");
    setSmartPath(reference, m_file);
    const Job job = makeJob(m_missing, wrapped(reference));
    job->setImportAsSmartReference(true);
    job->setLoadBehavior(false);
    job->process();
    EXPECT_EQ(job->getState(), JobSucceeded);
    EXPECT_TRUE(job->getLoadedNode() == reference);
    EXPECT_THAT(childNames(m_part), ElementsAre("missing"));
    EXPECT_EQ(reference->getNChildren(), 1u);
    EXPECT_THAT(lastLoad().files, IsEmpty());
}

TEST_F(FileLoaderJob, RefreshSucceedsAlsoWhenNothingCouldBeLoaded)
{
    const osg::NodePtr reference = addReference(m_root, "reference");
    addGroup(reference, "old content");
    setSmartPath(reference, m_missing);
    const Job job = load(m_file, wrapped(reference));
    EXPECT_EQ(job->getState(), JobSucceeded);
    EXPECT_TRUE(job->getLoadedNode() == reference);
    EXPECT_EQ(nameOf(reference), "Größe 1");
    EXPECT_THAT(childNames(reference), ElementsAre("old content"));
}

TEST_F(FileLoaderJob, RefreshTakesNoNoticeOfALock)
{
    const osg::NodePtr reference = addReference(m_root, "reference");
    setSmartPath(reference, m_file);
    zn::nodes::nodePredicates().getLock = [](const osg::NodePtr&) { return true; };
    load(m_file, wrapped(reference));
    EXPECT_EQ(reference->getNChildren(), 1u);
    EXPECT_EQ(m_root->getNChildren(), 2u);
}

// Filling a reference

TEST_F(FileLoaderJob, FillMovesTheContentOfTheFileBelowTheReference)
{
    const osg::NodePtr reference = addReference(m_root, "reference");
    addGroup(reference, "already there");
    leavesSplicedNodes("Größe 1");
    const Job job = load(m_file, wrapped(reference));
    EXPECT_EQ(job->getState(), JobSucceeded);
    EXPECT_TRUE(job->getLoadedNode() == reference);
    ASSERT_EQ(reference->getNChildren(), 2u);
    EXPECT_EQ(nameOf(reference->getChild(0)), "already there");
    EXPECT_TRUE(osg::fcCast<osg::Geometry>(reference->getChild(1)->getCore()));
    EXPECT_EQ(referenceCore(reference)->getState(), 2u);
    EXPECT_EQ(nameOf(reference), "reference");
    EXPECT_FALSE(referenceCore(reference)->getSmartFile());
}

TEST_F(FileLoaderJob, FillIgnoresTheLoadBehaviorAndTheWishForASmartReference)
{
    const osg::NodePtr reference = addReference(m_root, "reference");
    leavesSplicedNodes("Größe 1");
    const Job job = makeJob(m_file, wrapped(reference));
    job->setLoadBehavior(true);
    job->setImportAsSmartReference(true);
    job->process();
    EXPECT_FALSE(lastLoad().select);
    EXPECT_FALSE(lastLoad().merge);
    EXPECT_FALSE(lastLoad().sceneWasEmpty);
    EXPECT_THAT(lastLoad().files, ElementsAre(m_file));
    EXPECT_FALSE(m_session.selectedNode());
    EXPECT_EQ(reference->getNChildren(), 1u);
}

TEST_F(FileLoaderJob, FillAsksForTheEmptinessOfTheSceneToo)
{
    m_root->subChild(m_part);
    const osg::RefPtr<osg::NodePtr> reference(addReference(osg::NodePtr(), "outside the scene"));
    leavesSplicedNodes("Größe 1");
    load(m_file, wrapped(reference));
    EXPECT_TRUE(lastLoad().sceneWasEmpty);
}

TEST_F(FileLoaderJob, FillLoadsBelowANodeThatNobodyHolds)
{
    const osg::NodePtr reference = addReference(m_root, "reference");
    leavesSplicedNodes("Größe 1");
    load(m_file, wrapped(reference));
    const osg::FieldContainerPtr holder = osg::FieldContainerFactory::the()->getContainer(lastLoad().parentId);
    ASSERT_TRUE(osg::fcCast<osg::Node>(holder));
    EXPECT_EQ(holder->getRefCount(), 0u);
    EXPECT_EQ(osg::fcCast<osg::Node>(holder)->getChild(0)->getNChildren(), 0u);
}

TEST_F(FileLoaderJob, FillFailsWhenTheLoadFails)
{
    const osg::NodePtr reference = addReference(m_root, "reference");
    leavesOnPurpose({"Node"});
    const Job job = load(m_missing, wrapped(reference));
    EXPECT_EQ(job->getState(), JobFailed);
    EXPECT_FALSE(job->getLoadedNode());
    EXPECT_EQ(reference->getNChildren(), 0u);
    EXPECT_EQ(referenceCore(reference)->getState(), 0u);
}

TEST_F(FileLoaderJob, FillSucceedsWithoutANodeWhenTheLoadBringsNoTree)
{
    m_session.state<files::SceneReaders>().add(
        {QStringLiteral("test"), {QStringLiteral("fake")}, [](files::ReadTask&) { return osg::NodePtr(); }});
    const osg::NodePtr reference = addReference(m_root, "reference");
    leavesOnPurpose({"Node"});
    const Job job = load(write(QStringLiteral("none.fake"), "x"), wrapped(reference));
    EXPECT_EQ(job->getState(), JobSucceeded);
    EXPECT_FALSE(job->getLoadedNode());
    EXPECT_EQ(reference->getNChildren(), 0u);
    EXPECT_EQ(referenceCore(reference)->getState(), 0u);
}

TEST_F(FileLoaderJob, FillIgnoresWhatTheLoadBringsBesideItsFirstNode)
{
    const auto readTwo = [this](files::ReadTask&) {
        const auto holder =
            osg::fcCast<osg::Node>(osg::FieldContainerFactory::the()->getContainer(lastLoad().parentId));
        addGroup(addGroup(holder, "first"), "content of first");
        const osg::NodePtr second = osg::makeNodeFor(osg::Group::create());
        addGroup(second, "content of second");
        return second;
    };
    m_session.state<files::SceneReaders>().add({QStringLiteral("test"), {QStringLiteral("fake")}, readTwo});
    const osg::NodePtr reference = addReference(m_root, "reference");
    leavesOnPurpose({"Node", "Node first", "Group", "Name", "Node two", "Group", "Name", "Node content of second",
                     "Group", "Name"});
    load(write(QStringLiteral("two.fake"), "x"), wrapped(reference));
    EXPECT_THAT(childNames(reference), ElementsAre("content of first"));
}

TEST_F(FileLoaderJob, FillKeepsTheOrderOfTheContent)
{
    const auto readThree = [](files::ReadTask&) {
        const osg::NodePtr root = osg::makeNodeFor(osg::Group::create());
        for (const char* name : {"a", "b", "c"})
            addGroup(root, name);
        return root;
    };
    m_session.state<files::SceneReaders>().add({QStringLiteral("test"), {QStringLiteral("fake")}, readThree});
    const osg::NodePtr reference = addReference(m_root, "reference");
    leavesSplicedNodes("three");
    load(write(QStringLiteral("three.fake"), "x"), wrapped(reference));
    EXPECT_THAT(childNames(reference), ElementsAre("a", "b", "c"));
}

TEST_F(FileLoaderJob, FillEditsChildrenAndStateWithinTheirBrackets)
{
    const osg::NodePtr reference = addReference(m_root, "reference");
    leavesSplicedNodes("Größe 1");
    const osg::EditAudit audit;
    load(m_file, wrapped(reference));
    const osg::EditAudit::Record children = {reference->getContainerId(), "Node", osg::Node::ChildrenFieldMask};
    const osg::EditAudit::Record state = {reference->getCore()->getContainerId(), "ExtReference",
                                          osg::ExtReferenceBase::StateFieldMask};
    ASSERT_GE(audit.brackets().size(), 2u);
    const std::vector<osg::EditAudit::Record> last(audit.brackets().end() - 2, audit.brackets().end());
    EXPECT_THAT(last, ElementsAre(children, state));
    EXPECT_THAT(audit.idleBrackets(), IsEmpty());
    EXPECT_EQ(audit.openBrackets(), 0u);
}

TEST_F(FileLoaderJob, ALoadThatLeftNothingInTheListGivesNoNode)
{
    const zn::CallTrace trace([this](const std::string& call) {
        if (call == "znFileIO::getLoadedGeometriesList()")
            m_session.state<zn::kernel::LoadedGeometries>().entries.clear();
    });
    const Job job = load(m_file, wrapped(m_part));
    EXPECT_EQ(job->getState(), JobSucceeded);
    EXPECT_FALSE(job->getLoadedNode());
}

} // namespace
