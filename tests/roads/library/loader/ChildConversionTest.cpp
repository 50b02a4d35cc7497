#include "host/znJobProcessing/znManagedJobQueue.h"
#include "scene/EditAudit.h"
#include "tests/loader/LoaderTest.h"

#include <QMetaMethod>
#include <QPointer>
#include <QTest>
#include <QTimer>

using namespace znCADFileTypes;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

namespace
{

class ChildConversionTest : public LoaderTest
{
protected:
    /// A part file whose conversion does as `script` says, without an output of its own.
    QString writeScript(const QString& name, const QByteArray& script) const { return write(name, script); }
};

TEST_F(ChildConversionTest, TheSignalsOfAPartComeInOrder)
{
    refer("bolt", writePart(QStringLiteral("bolt.stp"), {"head"}));
    const auto job = makeLoader();
    LoaderLog log(*job);
    EXPECT_EQ(log.run(),
              texts({"starting", "started", "starting bolt.stp", "converter for bolt.stp", "load of bolt.stp", "loaded",
                     "end of bolt.stp", "all ended", "processed", "finished 0"}));
    EXPECT_GT(log.seconds, 0);
    EXPECT_LT(log.seconds, 60);
}

TEST_F(ChildConversionTest, AllConversionsAreMadeBeforeTheFirstRuns)
{
    refer("bolt", writePart(QStringLiteral("bolt.stp"), {"head"}, line("write", QStringLiteral("ran"), "x")));
    refer("nut", writePart(QStringLiteral("nut.stp"), {"ring"}, line("write", QStringLiteral("ran"), "x")));
    const auto job = makeLoader();
    std::vector<bool> ran;
    QObject::connect(job.get(), &znPtxLoaderJob::childPtxConverterJobCreated,
                     [&](const znPtxConverterJob*) { ran.push_back(has(QStringLiteral("ran"))); });
    job->run();
    EXPECT_THAT(ran, ElementsAre(false, false));
    EXPECT_TRUE(has(QStringLiteral("ran")));
}

TEST_F(ChildConversionTest, TheOutputOfAFailedConversionIsNotLoaded)
{
    writePart(QStringLiteral("bolt.stp"), {"head"});
    refer("bolt", write(QStringLiteral("bolt.stp"), line("output-from", QStringLiteral("made/bolt.stp")) + "exit 7\n"));
    const auto job = makeLoader();
    LoaderLog log(*job);
    log.run();
    EXPECT_EQ(log.count(QStringLiteral("load of")), 0);
    EXPECT_THAT(namesBelow(*job, 0), IsEmpty());
    EXPECT_EQ(job->getState(), JobPartial);
}

TEST_F(ChildConversionTest, WhenAllHaveEndedTheQueueOfThePartsRests)
{
    refer("bolt", writePart(QStringLiteral("bolt.stp"), {"head"}));
    const auto job = makeLoader();
    job->run();
    auto* const queue = job->findChild<znManagedJobQueue*>();
    ASSERT_TRUE(queue);
    queue->addJob(makeStepJob(line("write", QStringLiteral("late"), "x")).release());
    QTest::qWait(200);
    EXPECT_FALSE(has(QStringLiteral("late")));
    queue->startProcessing();
    EXPECT_TRUE(waitUntil([&] { return has(QStringLiteral("late")); }));
}

TEST_F(ChildConversionTest, TwoNodesOfOneFileGetACopyEachOfOneConversion)
{
    const QString part =
        writePart(QStringLiteral("bolt.stp"), {"head", "shank"}, line("append", QStringLiteral("runs"), "run"));
    refer("left bolt", part, 7);
    refer("right bolt", part, -7);
    const auto job = makeLoader();
    LoaderLog log(*job);
    log.run();
    EXPECT_EQ(job->getState(), JobSucceeded);
    EXPECT_EQ(readLines(QStringLiteral("runs")).size(), 1);
    EXPECT_EQ(log.count(QStringLiteral("load of")), 1);
    EXPECT_EQ(log.count(QStringLiteral("loaded")), 1);
    EXPECT_THAT(namesBelow(*job, 0), ElementsAre("head", "shank"));
    EXPECT_THAT(namesBelow(*job, 1), ElementsAre("head", "shank"));
    const osg::NodePtr left = job->getLoadedNode()->getChild(0);
    const osg::NodePtr right = job->getLoadedNode()->getChild(1);
    EXPECT_FALSE(left->getChild(0) == right->getChild(0));
    EXPECT_TRUE(left->getChild(0)->getCore() == right->getChild(0)->getCore());
}

TEST_F(ChildConversionTest, TheReferenceKeepsItsNameCoreAndPlace)
{
    const QString part = writePart(QStringLiteral("bolt.stp"), {"head"});
    refer("left bolt", part, 7);
    const auto job = makeLoader();
    job->run();
    const osg::NodePtr node = job->getLoadedNode()->getChild(0);
    EXPECT_EQ(nameOf(node), "left bolt");
    ASSERT_TRUE(referenceOf(node));
    EXPECT_EQ(referenceOf(node)->getMatrix()[12], 7);
    EXPECT_EQ(referenceOf(node)->getSourceFile()->getPath(), part.toStdString());
    EXPECT_EQ(referenceOf(node)->getState(), 2u);
}

TEST_F(ChildConversionTest, ChildrenAndStateOfAReferenceAreEdited)
{
    refer("bolt", writePart(QStringLiteral("bolt.stp"), {"head"}));
    const auto job = makeLoader();
    const osg::EditAudit audit;
    job->run();
    const osg::NodePtr node = job->getLoadedNode()->getChild(0);
    const osg::EditAudit::Record children = {node->getContainerId(), "Node", osg::Node::ChildrenFieldMask};
    const osg::EditAudit::Record state = {node->getCore()->getContainerId(), "ExtReference",
                                          osg::ExtReferenceBase::StateFieldMask};
    ASSERT_GE(audit.brackets().size(), 2u);
    EXPECT_THAT(std::vector(audit.brackets().end() - 2, audit.brackets().end()), ElementsAre(children, state));
    EXPECT_THAT(audit.unbracketed(), Not(Contains(children)));
    EXPECT_THAT(audit.idleBrackets(), IsEmpty());
    EXPECT_EQ(audit.openBrackets(), 0u);
}

TEST_F(ChildConversionTest, APartIsConvertedAsOneFileNextToTheConvertedAssembly)
{
    refer("group", writePart(QStringLiteral("group.stp"), {"head"}, line("arguments", QStringLiteral("words"))));
    const auto job = makeLoader();
    QString output;
    QObject::connect(job.get(), &znPtxLoaderJob::childPtxConverterJobCreated, [&](znPtxConverterJob* child) {
        QObject::connect(child, &znPtxConverterJob::outputFileReady, [&](const QString& file) { output = file; });
    });
    job->run();
    const QStringList words = readLines(QStringLiteral("words"));
    EXPECT_FALSE(words.contains(QStringLiteral("--external-parts")));
    EXPECT_EQ(words.value(0), path(QStringLiteral("group.stp")));
    EXPECT_EQ(QFileInfo(output).absolutePath(), outputFolder());
}

TEST_F(ChildConversionTest, AFailedConversionLeavesItsNodesEmptyAndTheOthersComplete)
{
    refer("bolt", writePart(QStringLiteral("bolt.stp"), {"head"}));
    refer("nut", writeScript(QStringLiteral("nut.stp"), "exit 7"));
    const auto job = makeLoader();
    LoaderLog log(*job);
    log.run();
    EXPECT_EQ(job->getState(), JobPartial);
    EXPECT_THAT(namesBelow(*job, 0), ElementsAre("head"));
    EXPECT_THAT(namesBelow(*job, 1), IsEmpty());
    EXPECT_EQ(referenceOf(job->getLoadedNode()->getChild(1))->getState(), 0u);
    EXPECT_EQ(log.count(QStringLiteral("end of nut.stp")), 1);
    EXPECT_EQ(log.count(QStringLiteral("load of")), 1);
    EXPECT_EQ(log.count(QStringLiteral("all ended")), 1);
}

TEST_F(ChildConversionTest, IfAllConversionsFailTheTreeStaysAndTheJobIsPartial)
{
    refer("bolt", writeScript(QStringLiteral("bolt.stp"), "exit 7"));
    refer("nut", writeScript(QStringLiteral("nut.stp"), "crash 11"));
    const auto job = makeLoader();
    LoaderLog log(*job);
    log.run();
    EXPECT_EQ(job->getState(), JobPartial);
    EXPECT_EQ(job->getLoadedNode()->getNChildren(), 2u);
    EXPECT_EQ(log.count(QStringLiteral("end of")), 2);
}

TEST_F(ChildConversionTest, AGoodEndWithoutOutputIsALoss)
{
    refer("bolt", writeScript(QStringLiteral("bolt.stp"), "exit 0"));
    const auto job = makeLoader();
    LoaderLog log(*job);
    EXPECT_EQ(log.run(), texts({"starting", "started", "starting bolt.stp", "converter for bolt.stp", "end of bolt.stp",
                                "all ended", "processed", "finished 3"}));
}

TEST_F(ChildConversionTest, AnOutputThatGivesNoNodeIsALoss)
{
    refer("bolt", writeScript(QStringLiteral("bolt.stp"), "output no scene"));
    const auto job = makeLoader();
    LoaderLog log(*job);
    EXPECT_EQ(log.run(),
              texts({"starting", "started", "starting bolt.stp", "converter for bolt.stp", "load of bolt.stp",
                     "not loaded", "end of bolt.stp", "all ended", "processed", "finished 3"}));
    EXPECT_THAT(namesBelow(*job, 0), IsEmpty());
}

TEST_F(ChildConversionTest, APartFileThatIsNotThereIsTriedAndIsALoss)
{
    refer("bolt", path(QStringLiteral("nowhere.stp")));
    const auto job = makeLoader();
    LoaderLog log(*job);
    log.run();
    EXPECT_EQ(log.count(QStringLiteral("converter for nowhere.stp")), 1);
    EXPECT_EQ(job->getState(), JobPartial);
}

TEST_F(ChildConversionTest, APartWithoutContentHasArrived)
{
    refer("bolt", writePart(QStringLiteral("bolt.stp"), {}));
    const auto job = makeLoader();
    job->run();
    EXPECT_EQ(job->getState(), JobSucceeded);
    EXPECT_EQ(referenceOf(job->getLoadedNode()->getChild(0))->getState(), 2u);
}

TEST_F(ChildConversionTest, ReferencesOfAPartAreNotFollowed)
{
    const Root root(makeReference("part root", path(QStringLiteral("group.stp"))));
    root->addChild(makeReference("inner", writePart(QStringLiteral("inner.stp"), {"never"})));
    writeScene(QStringLiteral("made/group.stp"), root.get());
    refer("group", write(QStringLiteral("group.stp"), line("output-from", QStringLiteral("made/group.stp"))));
    const auto job = makeLoader();
    LoaderLog log(*job);
    log.run();
    EXPECT_EQ(job->getState(), JobSucceeded);
    EXPECT_EQ(log.count(QStringLiteral("converter for")), 1);
    EXPECT_THAT(childNames(job->getLoadedNode()->getChild(0)->getChild(0)), IsEmpty());
}

TEST_F(ChildConversionTest, NoMoreConversionsRunThanTheHostAllows)
{
    // Each child notes how many are there with it.
    for (int i = 0; i < 6; ++i) {
        const QString name = QStringLiteral("part %1.stp").arg(i);
        refer("part", writePart(name, {"head"}, "wait 30\n"));
    }
    const auto job = makeLoader();
    int running = 0;
    int most = 0;
    QObject::connect(job.get(), &znPtxLoaderJob::childPtxConverterJobCreated, [&](znPtxConverterJob* child) {
        QObject::connect(child, &znAbstractJob::starting, [&] { most = std::max(most, ++running); });
        QObject::connect(child, &znAbstractJob::finished, [&] { --running; });
    });
    job->run();
    EXPECT_EQ(job->getState(), JobSucceeded);
    EXPECT_EQ(most, 2);
    EXPECT_EQ(running, 0);
}

TEST_F(ChildConversionTest, EndedChildrenAreGoneWhileTheParentStillWaits)
{
    refer("quick", writePart(QStringLiteral("quick.stp"), {"head"}));
    refer("slow", writePart(QStringLiteral("slow.stp"), {"head"}, line("wait-for", QStringLiteral("go"))));
    const auto job = makeLoader();
    QPointer<QObject> converter;
    QPointer<QObject> load;
    bool bothGone = false;
    QObject::connect(job.get(), &znPtxLoaderJob::childPtxConverterJobCreated, [&](znPtxConverterJob* child) {
        if (child->getInputFile().endsWith(QStringLiteral("quick.stp")))
            converter = child;
    });
    QObject::connect(job.get(), &znPtxLoaderJob::childOsbLoaderJobCreated,
                     [&](znOsbLoaderJob* child, const QString&) { load = child; });
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, [&] {
        bothGone = !converter && !load;
        if (!bothGone)
            return;
        watch.stop(); // the slow part is loaded as well
        write(QStringLiteral("go"), "x");
    });
    QObject::connect(job.get(), &znPtxLoaderJob::childPtxImportFinished, &watch, [&](const QString& file) {
        if (file.endsWith(QStringLiteral("quick.stp")))
            watch.start(1);
    });
    job->run();
    EXPECT_TRUE(bothGone);
    EXPECT_EQ(job->getState(), JobSucceeded);
}

TEST_F(ChildConversionTest, QueuedSlotsReceiveTheChildren)
{
    refer("bolt", writePart(QStringLiteral("bolt.stp"), {"head"}));
    const auto job = makeLoader();
    QObject context;
    QStringList files;
    QObject::connect(
        job.get(), &znPtxLoaderJob::childPtxConverterJobCreated, &context,
        [&](const znPtxConverterJob* child) { files << QFileInfo(child->getInputFile()).fileName(); },
        Qt::QueuedConnection);
    QObject::connect(
        job.get(), &znPtxLoaderJob::childOsbLoaderJobCreated, &context,
        [&](const znOsbLoaderJob*, const QString& file) { files << QFileInfo(file).fileName(); }, Qt::QueuedConnection);
    job->run();
    drainEvents();
    EXPECT_EQ(files, texts({"bolt.stp", "bolt.stp"}));
    const QMetaObject& meta = znPtxLoaderJob::staticMetaObject;
    const int created = meta.indexOfSignal("childPtxConverterJobCreated(znPtxConverterJob*)");
    const int loading = meta.indexOfSignal("childOsbLoaderJobCreated(znOsbLoaderJob*,QString)");
    EXPECT_NE(meta.method(created).parameterType(0), int(QMetaType::UnknownType));
    EXPECT_NE(meta.method(loading).parameterType(0), int(QMetaType::UnknownType));
}

TEST_F(ChildConversionTest, ASecondRunConvertsThePartsAgain)
{
    refer("bolt", writePart(QStringLiteral("bolt.stp"), {"head"}, line("append", QStringLiteral("runs"), "run")));
    const auto job = makeLoader();
    job->run();
    job->run();
    EXPECT_EQ(job->getState(), JobSucceeded);
    EXPECT_EQ(readLines(QStringLiteral("runs")).size(), 2);
    EXPECT_THAT(namesBelow(*job, 0), ElementsAre("head"));
}

} // namespace
