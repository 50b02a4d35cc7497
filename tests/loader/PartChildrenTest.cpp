#include "loader/PartChildren.h"

#include "host/znJobProcessing/znManagedJobQueue.h"
#include "tests/loader/LoaderTest.h"

using namespace znCADFileTypes;
using parts::PartChildren;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

namespace
{

/// Children of nobody in particular, with a policy of the test's own.
class PartChildrenTest : public LoaderTest
{
protected:
    PartChildrenTest()
    {
        m_queue.setDeleteFinishedOrFailedJobs(true);
        QObject::connect(&m_queue, &znJobQueue::jobQueueEmpty, [this] { m_waiting = false; });
    }

    void convertAll()
    {
        std::vector<std::string> files;
        for (const auto& [file, nodes] : m_parts)
            files.push_back(file);
        for (const std::string& file : files)
            m_children.convert(file, outputFolder());
        m_waiting = true;
        m_queue.startProcessing();
        PartChildren::wait(m_waiting);
    }

    UnloadedParts m_parts;
    std::vector<std::string> m_placed;
    znManagedJobQueue m_queue{nullptr};
    bool m_waiting = false;
    PartChildren m_children{&m_queue,
                            m_parts,
                            [this](const osg::NodePtr& target, const osg::NodePtr& loaded) {
                                m_placed.push_back(nameOf(loaded->getChild(0)) + " at " + nameOf(target));
                            },
                            {[](znPtxConverterJob*) {}, [](znOsbLoaderJob*, const QString&) {}, [](znOsbLoaderJob*) {},
                             [](const QString&) {}}};
};

TEST_F(PartChildrenTest, ThePolicyIsAskedForEveryNodeInOrder)
{
    const QString bolt = writePart(QStringLiteral("bolt.stp"), {"head"});
    m_parts[bolt.toStdString()] = {refer("first", bolt), refer("second", bolt), refer("third", bolt)};
    convertAll();
    EXPECT_THAT(m_placed, ElementsAre("head at first", "head at second", "head at third"));
    EXPECT_EQ(m_children.arrivedCount(), 1u);
    EXPECT_THAT(m_parts, IsEmpty());
}

TEST_F(PartChildrenTest, AnEntryWithoutNodesArrivesToo)
{
    m_parts[writePart(QStringLiteral("bolt.stp"), {"head"}).toStdString()] = {};
    convertAll();
    EXPECT_THAT(m_placed, IsEmpty());
    EXPECT_EQ(m_children.arrivedCount(), 1u);
}

TEST_F(PartChildrenTest, ResultsThatNobodyWantsAreNotLoadedAndDoNotCount)
{
    const QString bolt = writePart(QStringLiteral("bolt.stp"), {"head"});
    m_parts[bolt.toStdString()] = {refer("first", bolt)};
    m_children.setLoadResults([] { return false; });
    convertAll();
    EXPECT_THAT(m_placed, IsEmpty());
    EXPECT_EQ(m_children.arrivedCount(), 0u);
    EXPECT_THAT(m_parts, IsEmpty());
    EXPECT_EQ(outputs().size(), 1);
}

TEST_F(PartChildrenTest, OnlyWhatArrivesCounts)
{
    for (const char* name : {"bolt", "nut"}) {
        const QString file = writePart(QString::fromUtf8(name) + QStringLiteral(".stp"), {name});
        m_parts[file.toStdString()] = {refer(name, file)};
    }
    const QString broken = write(QStringLiteral("broken.stp"), "exit 7");
    m_parts[broken.toStdString()] = {refer("broken", broken)};
    convertAll();
    EXPECT_THAT(m_placed, UnorderedElementsAre("bolt at bolt", "nut at nut"));
    EXPECT_EQ(m_children.arrivedCount(), 2u);
    EXPECT_THAT(m_parts, IsEmpty());
}

} // namespace
