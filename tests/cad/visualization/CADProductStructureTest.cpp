#include "cad/visualization/CADProductStructure.h"

#include "host/OSGSystem/ComponentTransform.h"
#include "tests/cad/visualization/TableStructure.h"
#include "tests/standalone/session/SessionTest.h"

#include <functional>
#include <stdexcept>

namespace HB::Visualization
{

namespace
{

using testing::ElementsAre;

class ProductStructureTest : public SessionTest
{
protected:
    /// 0 with the children 1 and 2, of which 1 has the child 3.
    void fill()
    {
        m_structure.add(0);
        m_structure.add(0);
        m_structure.add(0);
        m_structure.add(1);
    }
    std::vector<int> states() const
    {
        std::vector<int> result;
        for (std::uint32_t id = 0; id < m_structure.getNodeCount(); ++id)
            result.push_back(static_cast<int>(ProductStructureTestAccess::record(m_structure, id).getState()));
        return result;
    }
    void setStates(std::initializer_list<CADLoadState> states)
    {
        std::uint32_t id = 0;
        for (const auto state : states)
            ProductStructureTestAccess::record(m_structure, id++).setState(state);
    }
    static std::string failureOf(const std::function<void()>& call)
    {
        try {
            call();
        } catch (const std::runtime_error& error) {
            return error.what();
        }
        return "no exception";
    }

    TableStructure m_structure;
};

TEST_F(ProductStructureTest, TheRootIsZeroEvenInAnEmptyTable)
{
    EXPECT_EQ(m_structure.getRootId(), 0U);
    EXPECT_EQ(m_structure.getNodeCount(), 0U);
    EXPECT_FALSE(m_structure.isValidId(0));
    EXPECT_EQ(failureOf([this] { m_structure.getChildCount(0); }), "No node with Id: 0");
}

TEST_F(ProductStructureTest, EveryOperationWithAnIdChecksIt)
{
    fill();
    const std::vector<std::function<void()>> calls = {
        [this] { m_structure.getChildCount(4); },
        [this] { m_structure.getChild(4, 0); },
        [this] { m_structure.getNodeName(4); },
        [this] { m_structure.requestLoad(4); },
        [this] { m_structure.requestUnload(4); },
        [this] { m_structure.setMarked(4, true); },
        [this] { m_structure.isMarked(4); },
        [this] { m_structure.setActive(4, true); },
        [this] { m_structure.isActive(4); },
        [this] { m_structure.setAuxiliary(4, true); },
        [this] { m_structure.getAuxiliary(4); },
        [this] { m_structure.getUserDataText(4); },
        [this] { m_structure.setTranslation(4, 1, 2, 3); },
        [this] { m_structure.getTranslation(4); },
        [this] { m_structure.setRotation(4, 0, 0, 1, 1); },
        [this] { m_structure.getRotation(4); },
        [this] { m_structure.setScale(4, 1, 1, 1); },
        [this] { m_structure.getScale(4); },
        [this] { m_structure.checkId(4); },
        [this] { m_structure.getSceneNode(4); },
        [this] { m_structure.realizeNode(4); },
        [this] { m_structure.getNodeLocation(4); },
        [this] { m_structure.getNodeFileName(4); },
    };
    for (std::size_t i = 0; i < calls.size(); ++i)
        EXPECT_EQ(failureOf(calls[i]), "No node with Id: 4") << "call " << i;
    EXPECT_EQ(failureOf([this] { m_structure.checkId(4294967295U); }), "No node with Id: 4294967295");
    EXPECT_TRUE(m_structure.isValidId(3));
    EXPECT_FALSE(m_structure.isValidId(4));
    EXPECT_EQ(failureOf([this] { m_structure.checkId(3); }), "no exception");
}

TEST_F(ProductStructureTest, UpdateChecksNothing)
{
    m_structure.update();
    EXPECT_EQ(m_structure.getNodeCount(), 0U);
}

TEST_F(ProductStructureTest, ChildrenAreToldByTheirIds)
{
    fill();
    EXPECT_EQ(m_structure.getNodeCount(), 4U);
    ASSERT_EQ(m_structure.getChildCount(0), 2U);
    EXPECT_EQ(m_structure.getChild(0, 0), 1U);
    EXPECT_EQ(m_structure.getChild(0, 1), 2U);
    EXPECT_EQ(m_structure.getChild(1, 0), 3U);
    EXPECT_EQ(failureOf([this] { m_structure.getChild(0, 2); }), "childNum is out of range");
}

TEST_F(ProductStructureTest, TheNameIsThatOfTheNode)
{
    fill();
    EXPECT_EQ(m_structure.getNodeName(0), "");
    ProductStructureTestAccess::record(m_structure, 0).setNode(m_session.sceneRoot());
    ProductStructureTestAccess::record(m_structure, 1).setNode(addGroup(m_session.sceneRoot(), ""));
    EXPECT_EQ(m_structure.getNodeName(0), "Scene");
    EXPECT_EQ(m_structure.getNodeName(1), "");
    EXPECT_TRUE(m_structure.getSceneNode(0) == m_session.sceneRoot());
    EXPECT_FALSE(m_structure.getSceneNode(2));
}

TEST_F(ProductStructureTest, RequestsGoThroughTheWholeSubtree)
{
    fill();
    m_structure.requestLoad(0);
    EXPECT_THAT(states(), ElementsAre(1, 1, 1, 1));
    m_structure.requestLoad(0);
    EXPECT_THAT(states(), ElementsAre(1, 1, 1, 1));
    m_structure.requestUnload(1);
    EXPECT_THAT(states(), ElementsAre(1, 0, 1, 0));
    m_structure.requestUnload(0);
    EXPECT_THAT(states(), ElementsAre(0, 0, 0, 0));
}

TEST_F(ProductStructureTest, EachRecordAnswersARequestByItsOwnState)
{
    fill();
    setStates({CADLoadState::Realized, CADLoadState::FilePending, CADLoadState::FileLoaded, CADLoadState::Idle});
    m_structure.requestUnload(0);
    EXPECT_THAT(states(), ElementsAre(3, 4, 7, 0));
    m_structure.requestLoad(0);
    EXPECT_THAT(states(), ElementsAre(2, 5, 6, 1));
}

TEST_F(ProductStructureTest, MarkAndActivityAreThoseOfTheRecord)
{
    fill();
    m_structure.setMarked(2, true);
    m_structure.setActive(3, false);
    EXPECT_TRUE(m_structure.isMarked(2));
    EXPECT_FALSE(m_structure.isMarked(3));
    EXPECT_FALSE(m_structure.isActive(3));
    EXPECT_TRUE(m_structure.isActive(2));
}

TEST_F(ProductStructureTest, TheAuxiliaryFlagIsReadAndNeverSet)
{
    fill();
    m_structure.setAuxiliary(1, true);
    EXPECT_FALSE(m_structure.getAuxiliary(1));
    NodeRecordTestAccess::setAuxiliary(ProductStructureTestAccess::record(m_structure, 1));
    EXPECT_TRUE(m_structure.getAuxiliary(1));
    m_structure.setAuxiliary(1, false);
    EXPECT_TRUE(m_structure.getAuxiliary(1));
}

TEST_F(ProductStructureTest, PlacementsAreThoseOfTheRecord)
{
    fill();
    const osg::NodePtr node = addGroup(m_session.sceneRoot(), "part");
    node->setCore(osg::ComponentTransform::create());
    ProductStructureTestAccess::record(m_structure, 2).setNode(node);
    m_structure.setTranslation(2, 1, 2, 3);
    m_structure.setScale(2, 4, 5, 6);
    EXPECT_THAT(m_structure.getTranslation(2), ElementsAre(1, 2, 3));
    EXPECT_THAT(m_structure.getScale(2), ElementsAre(4, 5, 6));
    EXPECT_THAT(m_structure.getRotation(2), ElementsAre(0, 0, 1, 0));
    m_structure.setRotation(2, 0, 3, 0, 1);
    ASSERT_EQ(m_structure.getRotation(2).size(), 4U);
    EXPECT_NEAR(m_structure.getRotation(2)[1], 1, 1e-5);
    EXPECT_NEAR(m_structure.getRotation(2)[3], 1, 1e-5);
    EXPECT_THAT(m_structure.getTranslation(1), testing::IsEmpty());
}

TEST_F(ProductStructureTest, ANodeIsRealizedByItsRecord)
{
    fill();
    m_structure.realizeNode(2);
    EXPECT_THAT(m_structure.m_realized, ElementsAre(&ProductStructureTestAccess::record(m_structure, 2)));
}

TEST_F(ProductStructureTest, ItsEndReleasesFileNodesAndLeavesTheTreeAlone)
{
    const osg::RefPtr<osg::NodePtr> file(osg::makeNodeFor(osg::Group::create()));
    const osg::NodePtr node = addGroup(m_session.sceneRoot(), "part");
    {
        TableStructure structure;
        structure.add(0).setNode(node);
        structure.storeFileNode("/a.jt", file);
        EXPECT_EQ(file->getRefCount(), 2U);
    }
    EXPECT_EQ(file->getRefCount(), 1U);
    EXPECT_EQ(node->getRefCount(), 1U);
    EXPECT_THAT(childNames(m_session.sceneRoot()), ElementsAre("part"));
}

} // namespace

} // namespace HB::Visualization
