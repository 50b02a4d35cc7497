#include "tests/loader/LoaderTest.h"

using namespace znCADFileTypes;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

/// Which reference nodes a load has converted. Every conversion would succeed.
class UnloadedPartFilesTest : public LoaderTest
{
protected:
    QString bolt() const { return writePart(QStringLiteral("bolt.stp"), {"head", "shank"}); }

    /// The part files for which conversions were made.
    QStringList runAndCollect(znPtxLoaderJob& job)
    {
        QStringList files;
        QObject::connect(&job, &znPtxLoaderJob::childPtxConverterJobCreated,
                         [&](const znPtxConverterJob* child) { files << child->getInputFile(); });
        job.run();
        return files;
    }
};

TEST_F(UnloadedPartFilesTest, AnEmptyReferenceIsCollected)
{
    const QString part = bolt();
    refer("bolt", part);
    const auto job = makeLoader();
    EXPECT_EQ(runAndCollect(*job), QStringList(part));
    EXPECT_THAT(namesBelow(*job, 0), ElementsAre("head", "shank"));
}

TEST_F(UnloadedPartFilesTest, DeepReferencesAreCollectedToo)
{
    const QString part = bolt();
    addGroup(addGroup(assembly(), "upper"), "lower")->addChild(makeReference("bolt", part));
    const auto job = makeLoader();
    EXPECT_EQ(runAndCollect(*job), QStringList(part));
}

TEST_F(UnloadedPartFilesTest, AReferenceWithChildrenIsLoadedAlready)
{
    addGroup(refer("bolt", bolt()), "old head");
    const auto job = makeLoader();
    EXPECT_EQ(runAndCollect(*job), QStringList());
    EXPECT_EQ(job->getState(), JobSucceeded);
    EXPECT_THAT(namesBelow(*job, 0), ElementsAre("old head"));
    EXPECT_EQ(referenceOf(job->getLoadedNode()->getChild(0))->getState(), 0u);
}

TEST_F(UnloadedPartFilesTest, WhatHangsBelowALoadedReferenceIsLookedAt)
{
    const QString part = bolt();
    refer("group", path(QStringLiteral("group.stp")))->addChild(makeReference("bolt", part));
    const auto job = makeLoader();
    EXPECT_EQ(runAndCollect(*job), QStringList(part));
}

TEST_F(UnloadedPartFilesTest, TheRootIsNeverAPart)
{
    write(QStringLiteral("engine.stp"), "exit 0");
    const auto job = makeLoader();
    EXPECT_EQ(runAndCollect(*job), QStringList());
    EXPECT_EQ(job->getState(), JobSucceeded);
    EXPECT_EQ(referenceOf(job->getLoadedNode())->getState(), 0u);
}

TEST_F(UnloadedPartFilesTest, ReferencesWithoutFileOrPathStayEmptyAndAreNoLoss)
{
    refer("pathless", QString());
    assembly()->addChild(osg::makeNodeFor(osg::ExtReferenceBase::create()));
    assembly()->addChild(osg::Node::create());
    const auto job = makeLoader();
    EXPECT_EQ(runAndCollect(*job), QStringList());
    EXPECT_EQ(job->getState(), JobSucceeded);
    EXPECT_EQ(job->getLoadedNode()->getNChildren(), 3u);
}

TEST_F(UnloadedPartFilesTest, WithOneProcessReferencesStay)
{
    refer("bolt", bolt());
    set("processes.most", QStringLiteral("1"));
    const auto job = makeLoader();
    EXPECT_EQ(runAndCollect(*job), QStringList());
    EXPECT_EQ(job->getState(), JobSucceeded);
    EXPECT_THAT(namesBelow(*job, 0), IsEmpty());
}

TEST_F(UnloadedPartFilesTest, WithoutTheWishForReferencedFilesReferencesStay)
{
    refer("bolt", bolt());
    set("import.Step.referencedFiles", QStringLiteral("off"));
    const auto job = makeLoader();
    EXPECT_EQ(runAndCollect(*job), QStringList());
    EXPECT_EQ(job->getState(), JobSucceeded);
    EXPECT_THAT(namesBelow(*job, 0), IsEmpty());
}

TEST_F(UnloadedPartFilesTest, TheWishIsThatOfTheOriginalFilesFormat)
{
    const QString part = bolt();
    refer("bolt", part);
    set("import.Iges.referencedFiles", QStringLiteral("off"));
    const auto job = makeLoader();
    EXPECT_EQ(runAndCollect(*job), QStringList(part));
}

TEST_F(UnloadedPartFilesTest, AnOriginalFileThatIsNoAssemblyHasNoParts)
{
    refer("bolt", bolt());
    znPtxLoaderJob job(writeScene(QStringLiteral("engine.osb"), assembly()), path(QStringLiteral("engine.stl")));
    EXPECT_EQ(runAndCollect(job), QStringList());
    EXPECT_EQ(job.getState(), JobSucceeded);
}

} // namespace
