#include "plmxml/znPLMXMLLoaderJob.h"

#include "host/znJobProcessing/znJobQueue.h"
#include "scene/EditAudit.h"
#include "standalone/znKernel/LoadedGeometries.h"
#include "standalone/znKernel/UserInterfaceState.h"
#include "standalone/znUtils/CallTrace.h"
#include "tests/plmxml/LoaderJobFixture.h"
#include "tests/support/ReferenceRecorder.h"

#include <QElapsedTimer>
#include <QPointer>

namespace
{

using testing::ElementsAre;

TEST_F(PLMXMLLoaderJobTest, ADocumentWithoutPartFilesIsComplete)
{
    EXPECT_EQ(import({}), znCADFileTypes::JobSucceeded);
    EXPECT_THAT(lines, ElementsAre("started", "processed", "node", "finished 0"));
    EXPECT_EQ(treeText(), "car [ExtReference] file car.plmxml state 2\n"
                          "  - [Transform3D]\n");
    EXPECT_EQ(job->getFile(), path(QStringLiteral("car.plmxml")).toStdString());
}

TEST_F(PLMXMLLoaderJobTest, AMissingDocumentFailsAndIsToldTwice)
{
    make(path(QStringLiteral("none.plmxml")));
    EXPECT_EQ(run(), znCADFileTypes::JobFailed);
    EXPECT_THAT(lines, ElementsAre("started", "processed", "finished 1", "processed", "finished 1"));
    EXPECT_FALSE(job->getLoadedNode());
}

TEST_F(PLMXMLLoaderJobTest, AnUnreadableDocumentEndsWellWithoutANode)
{
    const ReferenceRecorder recorder(m_session);
    make(write(QStringLiteral("car.plmxml"), "<Other/>"));
    EXPECT_EQ(run(), znCADFileTypes::JobSucceeded);
    EXPECT_THAT(lines, ElementsAre("started", "processed", "finished 0"));
    EXPECT_FALSE(job->getLoadedNode());
    EXPECT_THAT(m_log, ElementsAre("Couldn't open '" + path(QStringLiteral("car.plmxml")).toStdString() + "'!"));
    const auto& notices = recorder.notifications();
    ASSERT_EQ(notices.size(), 1u);
    EXPECT_EQ(notices[0].rootId, 0u);
    EXPECT_EQ(notices[0].code, 9);
}

TEST_F(PLMXMLLoaderJobTest, AFileThatTheHostReadsGoesToTheFirstNodeOnly)
{
    writeTriangle(QStringLiteral("a.obj"));
    EXPECT_EQ(import({"a.obj", "a.obj", "a.obj", "a.obj"}), znCADFileTypes::JobSucceeded);
    EXPECT_THAT(lines, ElementsAre("started", "found a.obj", "loading a.obj", "loaded a.obj", "processed", "node",
                                   "finished 0"));
    for (unsigned i = 0; i < 4; ++i) {
        const osg::NodePtr part = tree->getChild(0)->getChild(i);
        EXPECT_EQ(nameOf(part), "P" + std::to_string(i));
        EXPECT_EQ(part->getChild(0)->getNChildren() > 0, i == 0) << i;
        // The clones share the core, so the state shows at all of them.
        EXPECT_EQ(referenceOf(part->getChild(0))->getState(), 2u);
    }
}

TEST_F(PLMXMLLoaderJobTest, TheOwnReferenceOfALoadedFileGoes)
{
    const Root root(makeReference("file root", QStringLiteral("x.stp")));
    addGroup(root.get(), "one");
    addGroup(root.get(), "two");
    writeScene(QStringLiteral("a.osb"), root.get());
    EXPECT_EQ(import({"a.osb"}), znCADFileTypes::JobSucceeded);
    const osg::NodePtr reference = tree->getChild(0)->getChild(0)->getChild(0);
    EXPECT_EQ(referenceOf(reference)->getState(), 2u);
    EXPECT_THAT(childNames(reference), ElementsAre("one", "two"));
}

TEST_F(PLMXMLLoaderJobTest, ARootThatIsNoReferenceStays)
{
    writeTriangle(QStringLiteral("a.obj"));
    ASSERT_EQ(import({"a.obj"}), znCADFileTypes::JobSucceeded);
    const osg::NodePtr reference = tree->getChild(0)->getChild(0)->getChild(0);
    ASSERT_EQ(reference->getNChildren(), 1u);
    EXPECT_EQ(nameOf(reference->getChild(0)), "a") << "the root of the file";
    EXPECT_EQ(reference->getChild(0)->getNChildren(), 1u);
}

TEST_F(PLMXMLLoaderJobTest, TheExchangeOfAReferenceIsAnEdit)
{
    writePart(QStringLiteral("a.stp"), {"wheel"});
    make(documentOf({"a.stp"}));
    const osg::EditAudit audit;
    run();
    const osg::NodePtr part = tree->getChild(0)->getChild(0);
    const osg::EditAudit::Record children = {part->getContainerId(), "Node", osg::Node::ChildrenFieldMask};
    EXPECT_THAT(audit.brackets(), testing::Contains(children));
    EXPECT_THAT(audit.unbracketed(), testing::Not(testing::Contains(children)));
    EXPECT_EQ(audit.openBrackets(), 0u);
}

TEST_F(PLMXMLLoaderJobTest, AConvertedPartTakesThePlacesOfItsReferences)
{
    writePart(QStringLiteral("a.stp"), {"wheel", "tyre"});
    EXPECT_EQ(import({"a.stp", "a.stp", "a.stp", "a.stp"}), znCADFileTypes::JobSucceeded);
    EXPECT_THAT(lines, ElementsAre("started", "found a.stp", "converter for a.stp", "load of a.stp", "load ended",
                                   "end of a.stp", "conversions ended", "processed", "node", "finished 0"));
    for (unsigned i = 0; i < 4; ++i) {
        const osg::NodePtr part = tree->getChild(0)->getChild(i);
        ASSERT_EQ(part->getNChildren(), 1u);
        EXPECT_EQ(nameOf(part->getChild(0)), "part root");
        EXPECT_THAT(childNames(part->getChild(0)), ElementsAre("wheel", "tyre"));
        EXPECT_EQ(referenceOf(part->getChild(0))->getState(), 2u);
    }
}

TEST_F(PLMXMLLoaderJobTest, ACloneGoesToTheEndOfTheParentsChildren)
{
    writePart(QStringLiteral("a.stp"), {"wheel"});
    make(
        write(QStringLiteral("car.plmxml"),
              "<PLMXML><ProductDef id='pd'><InstanceGraph rootRefs='i'><Instance id='i' name='I' partRef='p'/>"
              "<Instance id='j' name='J' partRef='q'/></InstanceGraph>"
              "<Part id='p' name='P' type='solid' instanceRefs='j'><Representation format='X' location='a.stp'/></Part>"
              "<Part id='q' name='Q'/></ProductDef></PLMXML>"));
    std::vector<std::string> before;
    QObject::connect(job.get(), &znPLMXMLLoaderJob::childOsbLoaderJobCreated, job.get(), [&] {
        const osg::NodePtr parent = job->getLoadedNode()->getChild(0)->getChild(0);
        addGroup(parent, "behind it");
        before = childNames(parent);
    });
    EXPECT_EQ(run(), znCADFileTypes::JobSucceeded);
    EXPECT_THAT(before, ElementsAre("Q", "a", "behind it"));
    EXPECT_THAT(childNames(tree->getChild(0)->getChild(0)), ElementsAre("Q", "behind it", "part root"));
}

TEST_F(PLMXMLLoaderJobTest, AMissingPartFileIsSkippedWithoutAWord)
{
    writeTriangle(QStringLiteral("b.obj"));
    EXPECT_EQ(import({"a.stp", "b.obj"}), znCADFileTypes::JobPartial);
    EXPECT_THAT(lines, ElementsAre("started", "found b.obj", "loading b.obj", "loaded b.obj", "processed", "node",
                                   "finished 3"));
    EXPECT_EQ(referenceOf(tree->getChild(0)->getChild(0)->getChild(0))->getState(), 0u);
}

TEST_F(PLMXMLLoaderJobTest, AFileThatCannotBeReadIsTold)
{
    write(QStringLiteral("a.obj"), "no triangle");
    EXPECT_EQ(import({"a.obj"}), znCADFileTypes::JobPartial);
    EXPECT_EQ(count("not loaded a.obj"), 1);
    EXPECT_EQ(referenceOf(tree->getChild(0)->getChild(0)->getChild(0))->getState(), 0u);
}

TEST_F(PLMXMLLoaderJobTest, AFailedConversionKeepsTheReference)
{
    writePart(QStringLiteral("a.stp"), {"wheel"});
    write(QStringLiteral("b.stp"), "exit 25");
    write(QStringLiteral("c.stp"), "exit 0");
    EXPECT_EQ(import({"a.stp", "b.stp", "c.stp"}), znCADFileTypes::JobPartial);
    EXPECT_EQ(count("end of"), 3);
    EXPECT_EQ(count("load of a.stp"), 1);
    EXPECT_EQ(count("load of"), 1);
    EXPECT_THAT(childNames(tree->getChild(0)->getChild(1)), ElementsAre("b"));
    EXPECT_THAT(childNames(tree->getChild(0)->getChild(2)), ElementsAre("c"));
}

TEST_F(PLMXMLLoaderJobTest, AResultWithoutANodeIsMissing)
{
    write(QStringLiteral("made/broken"), "no scene");
    write(QStringLiteral("a.stp"), line("output-from", QStringLiteral("made/broken")));
    EXPECT_EQ(import({"a.stp"}), znCADFileTypes::JobPartial);
    EXPECT_EQ(count("load ended without a node"), 1);
    EXPECT_THAT(childNames(tree->getChild(0)->getChild(0)), ElementsAre("a"));
}

TEST_F(PLMXMLLoaderJobTest, ConvertedFilesAreLeftAloneOnRequest)
{
    writePart(QStringLiteral("a.stp"), {"wheel"});
    make(documentOf({"a.stp"}));
    job->setLoadConvertedPtxFiles(false);
    EXPECT_EQ(run(), znCADFileTypes::JobPartial);
    EXPECT_THAT(lines, ElementsAre("started", "found a.stp", "converter for a.stp", "end of a.stp", "conversions ended",
                                   "processed", "node", "finished 3"));
}

/// The switch counts when a conversion has ended, so a listener may still change it then.
TEST_F(PLMXMLLoaderJobTest, WhetherConvertedFilesAreLoadedCountsWhenAConversionEnds)
{
    for (const bool atFirst : {true, false}) {
        writePart(QStringLiteral("a.stp"), {"wheel"});
        make(documentOf({"a.stp"}));
        job->setLoadConvertedPtxFiles(atFirst);
        QObject::connect(job.get(), &znPLMXMLLoaderJob::childPtxConverterJobCreated, job.get(),
                         [&](znPtxConverterJob* child) {
                             QObject::connect(child, &znPtxConverterJob::outputFileReady, job.get(),
                                              [&] { job->setLoadConvertedPtxFiles(!atFirst); });
                         });
        EXPECT_EQ(run(), atFirst ? znCADFileTypes::JobPartial : znCADFileTypes::JobSucceeded);
        EXPECT_EQ(count("load of"), atFirst ? 0 : 1);
    }
}

TEST_F(PLMXMLLoaderJobTest, UnwantedPartFilesStayUnreadAndTheImportIsComplete)
{
    set("import.PLMXML.referencedFiles", QStringLiteral("off"));
    writeTriangle(QStringLiteral("a.obj"));
    writePart(QStringLiteral("b.stp"), {"wheel"});
    EXPECT_EQ(import({"a.obj", "b.stp", "c.stp"}), znCADFileTypes::JobSucceeded);
    EXPECT_EQ(count("found"), 0);
    for (unsigned i = 0; i < 3; ++i)
        EXPECT_EQ(referenceOf(tree->getChild(0)->getChild(i)->getChild(0))->getState(), 0u);
}

TEST_F(PLMXMLLoaderJobTest, EachConversionIsAskedForOneFile)
{
    writePart(QStringLiteral("a.stp"), {"wheel"});
    make(documentOf({"a.stp"}));
    int asked = 0;
    QObject::connect(job.get(), &znPLMXMLLoaderJob::childPtxConverterJobCreated, job.get(),
                     [&](znPtxConverterJob* child) {
                         QObject::connect(child, &znAbstractJob::started, job.get(), [&asked] { ++asked; });
                         EXPECT_EQ(child->parent()->parent(), job.get());
                     });
    std::vector<std::string> calls;
    {
        const zn::CallTrace trace([&](const std::string& call) { calls.push_back(call); });
        run();
    }
    EXPECT_EQ(asked, 1);
    EXPECT_EQ(std::count_if(calls.begin(), calls.end(),
                            [](const std::string& call) {
                                return call.find("createProcessCommand") != std::string::npos &&
                                       call.find(", false, ") != std::string::npos;
                            }),
              1);
}

TEST_F(PLMXMLLoaderJobTest, AbortHasNoEffect)
{
    writePart(QStringLiteral("a.stp"), {"wheel"}, "wait 200");
    make(documentOf({"a.stp"}));
    QObject::connect(job.get(), &znPLMXMLLoaderJob::foundChildFile, job.get(), [this] { job->abort(); });
    QObject::connect(job.get(), &znPLMXMLLoaderJob::childPtxImportFinished, job.get(), [this] { job->abort(); });
    EXPECT_EQ(run(), znCADFileTypes::JobSucceeded);
}

TEST_F(PLMXMLLoaderJobTest, AbortInTheWaitLeavesRunningAndWaitingConversionsAlone)
{
    set("processes.most", QStringLiteral("1"));
    writePart(QStringLiteral("a.stp"), {"wheel"}, "wait 50");
    writePart(QStringLiteral("b.stp"), {"bolt"}, "wait 50");
    make(documentOf({"a.stp", "b.stp"}));
    int aborts = 0;
    QObject::connect(job.get(), &znPLMXMLLoaderJob::childPtxConverterJobCreated, job.get(),
                     [&](znPtxConverterJob* child) {
                         QObject::connect(child, &znAbstractJob::started, job.get(), [&] {
                             ++aborts;
                             job->abort();
                         });
                     });
    EXPECT_EQ(run(), znCADFileTypes::JobSucceeded);
    EXPECT_EQ(aborts, 2);
}

TEST_F(PLMXMLLoaderJobTest, TheEndOfConversionsCarriesTheReadingOfTheClock)
{
    writePart(QStringLiteral("a.stp"), {"wheel"});
    make(documentOf({"a.stp"}));
    QElapsedTimer clock;
    clock.start();
    ASSERT_EQ(QElapsedTimer::clockType(), QElapsedTimer::MonotonicClock);
    double seconds = -1;
    QObject::connect(job.get(), &znPLMXMLLoaderJob::childrenConversionFinished, job.get(),
                     [&](double value) { seconds = value; });
    run();
    const double start = double(clock.msecsSinceReference()) / 1000;
    EXPECT_GE(seconds, start);
    EXPECT_LE(seconds, start + double(clock.elapsed()) / 1000 + 1);
}

TEST_F(PLMXMLLoaderJobTest, EveryPlaceGetsACloneWhichSharesCoresAndTheOriginalGoes)
{
    writePart(QStringLiteral("a.stp"), {"wheel"});
    make(documentOf({"a.stp", "a.stp"}));
    unsigned loadedId = 0;
    QPointer<znOsbLoaderJob> load;
    QPointer<znPtxConverterJob> conversion;
    QObject::connect(job.get(), &znPLMXMLLoaderJob::childPtxConverterJobCreated, job.get(),
                     [&](znPtxConverterJob* child) { conversion = child; });
    QObject::connect(job.get(), &znPLMXMLLoaderJob::childOsbLoaderJobFinished, job.get(), [&](znOsbLoaderJob* child) {
        load = child;
        loadedId = child->getLoadedNode()->getContainerId();
    });
    EXPECT_EQ(run(), znCADFileTypes::JobSucceeded);
    drainEvents();
    EXPECT_FALSE(load);
    EXPECT_FALSE(conversion);
    const osg::NodePtr first = tree->getChild(0)->getChild(0)->getChild(0);
    const osg::NodePtr second = tree->getChild(0)->getChild(1)->getChild(0);
    EXPECT_NE(first, second);
    EXPECT_EQ(first->getCore(), second->getCore());
    EXPECT_EQ(first->getChild(0)->getCore(), second->getChild(0)->getCore());
    EXPECT_NE(first->getContainerId(), loadedId);
    EXPECT_NE(second->getContainerId(), loadedId);
}

TEST_F(PLMXMLLoaderJobTest, SignalsComeInTheirOrderWithTheirTypes)
{
    const QMetaObject& meta = znPLMXMLLoaderJob::staticMetaObject;
    std::vector<std::string> signalNames;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
        signalNames.push_back(meta.method(i).methodSignature().toStdString());
    EXPECT_THAT(signalNames,
                ElementsAre("foundChildFile(QString)", "childPtxImportFinished(QString)",
                            "childrenConversionFinished(double)", "childPtxConverterJobCreated(znPtxConverterJob*)",
                            "childOsbLoaderJobCreated(znOsbLoaderJob*,QString)",
                            "childOsbLoaderJobFinished(znOsbLoaderJob*)", "nodeReady(osg::NodePtr)",
                            "loadingChildFileStarted(QString)",
                            "loadingChildFileFinished(QString,znCADFileTypes::JobState)"));
    EXPECT_EQ(meta.method(meta.methodCount() - 1).parameterNames(), (QList<QByteArray>{"", "state"}));
}

TEST_F(PLMXMLLoaderJobTest, PartFilesAreNamedByEscapesAndLettersOfAnyKind)
{
    writePart(QString::fromUtf8("großes rad.stp"), {"wheel"});
    writeTriangle(QString::fromUtf8("板 1.obj"));
    EXPECT_EQ(import({"gro%C3%9fes%20rad.stp", "板 1.obj"}), znCADFileTypes::JobSucceeded);
    EXPECT_EQ(count("end of großes rad.stp"), 1);
    EXPECT_EQ(count("loaded 板 1.obj"), 1);
}

TEST_F(PLMXMLLoaderJobTest, AQueueRunsTheJob)
{
    znJobQueue queue;
    QSignalSpy empty(&queue, &znJobQueue::jobQueueEmpty);
    make(documentOf({}));
    queue.addJob(job.get());
    queue.startProcessing();
    ASSERT_TRUE(empty.count() > 0 || empty.wait(60000));
    tree = job->getLoadedNode();
    EXPECT_EQ(job->getState(), znCADFileTypes::JobSucceeded);
}

TEST_F(PLMXMLLoaderJobTest, AnExceptionOfTheDocumentLeavesNobodyBusy)
{
    // The tree that was being built has nobody who could hold it.
    leavesOnPurpose({"Node car", "Name", "Transform", "Node", "Transform", "Node P0", "Name", "Transform"});
    make(documentOf({"."}));
    std::vector<std::string> calls;
    const zn::CallTrace trace([&calls](const std::string& call) { calls.push_back(call); });
    EXPECT_EQ(run(), znCADFileTypes::JobFailed);
    EXPECT_FALSE(job->getErrorText().isEmpty());
    EXPECT_FALSE(m_session.state<zn::kernel::UserInterfaceState>().busy);
    ASSERT_GE(calls.size(), 2u);
    EXPECT_EQ(calls[calls.size() - 2], "znTexSearch::clearCurrentFile()");
    EXPECT_EQ(calls.back(), "znController::setBusy(false, false)");
    EXPECT_THAT(lines, ElementsAre("started", "finished 1"));
}

TEST_F(PLMXMLLoaderJobTest, ALoneSeparatorAsALocationIsAPartThatIsNotThere)
{
    EXPECT_EQ(import({"\\"}), znCADFileTypes::JobPartial);
    EXPECT_FALSE(m_session.state<zn::kernel::UserInterfaceState>().busy);
}

TEST_F(PLMXMLLoaderJobTest, AReferenceThatAListenerTookOutIsPassedOver)
{
    writePart(QStringLiteral("bolt.stp"), {"head"});
    make(documentOf({"bolt.stp", "bolt.stp"}));
    QObject::connect(job.get(), &znPLMXMLLoaderJob::childOsbLoaderJobCreated, [this] {
        const osg::NodePtr first = job->getLoadedNode()->getChild(0);
        osg::NodePtr holder = first;
        while (holder->getNChildren() > 0 && !osg::fcCast<osg::ExtReference>(holder->getChild(0)->getCore()))
            holder = holder->getChild(0);
        holder->subChild(holder->getChild(0));
    });
    EXPECT_EQ(run(), znCADFileTypes::JobSucceeded);
    EXPECT_EQ(count("load ended"), 1);
    EXPECT_EQ(treeText().find("state 0"), std::string::npos);
    EXPECT_NE(treeText().find("head"), std::string::npos);
}

TEST_F(PLMXMLLoaderJobTest, ALoadThatLeftNothingInTheListIsALoadAllTheSame)
{
    writeTriangle(QStringLiteral("plate.obj"));
    const zn::CallTrace trace([this](const std::string& call) {
        if (call == "znFileIO::getLoadedGeometriesList()")
            m_session.state<zn::kernel::LoadedGeometries>().entries.clear();
    });
    EXPECT_EQ(import({"plate.obj"}), znCADFileTypes::JobSucceeded);
    EXPECT_EQ(count("loaded plate.obj"), 1);
}

} // namespace
