#include "cad/visualization/CADNodeRecord.h"

#include "scene/EditAudit.h"
#include "tests/cad/visualization/TableStructure.h"
#include "tests/standalone/session/SessionTest.h"

#include <stdexcept>

namespace HB::Visualization
{

namespace
{

class NodeRecordTest : public SessionTest
{
protected:
    static std::vector<int> afterRequest(void (CADNodeRecord::*request)())
    {
        std::vector<int> states;
        for (std::uint32_t state = 0; state < 10; ++state) {
            CADNodeRecord record(nullptr);
            record.setState(static_cast<CADLoadState>(state));
            (record.*request)();
            states.push_back(static_cast<int>(record.getState()));
        }
        return states;
    }

    const osg::NodePtr m_node = addGroup(m_session.sceneRoot(), "carrier");
    const osg::NodePtr m_content = addGroup(m_node, "content");
    CADNodeRecord m_record{nullptr};
};

TEST_F(NodeRecordTest, StartsIdleActiveAndUnmarked)
{
    EXPECT_EQ(m_record.getElement(), nullptr);
    EXPECT_FALSE(m_record.getNode());
    EXPECT_FALSE(m_record.getParentNode());
    EXPECT_FALSE(m_record.getMaterialNode());
    EXPECT_EQ(m_record.getChildCount(), 0U);
    EXPECT_EQ(m_record.getState(), CADLoadState::Idle);
    EXPECT_FALSE(m_record.isMarked());
    EXPECT_TRUE(m_record.isActive());
    EXPECT_FALSE(m_record.isAuxiliary());
    EXPECT_EQ(NodeRecordTestAccess::fileName(m_record), "");
}

TEST_F(NodeRecordTest, StatesAreNumbered)
{
    EXPECT_EQ(static_cast<int>(CADLoadState::Idle), 0);
    EXPECT_EQ(static_cast<int>(CADLoadState::IdleLoadRequested), 1);
    EXPECT_EQ(static_cast<int>(CADLoadState::Realized), 2);
    EXPECT_EQ(static_cast<int>(CADLoadState::RealizedUnloadRequested), 3);
    EXPECT_EQ(static_cast<int>(CADLoadState::FilePending), 4);
    EXPECT_EQ(static_cast<int>(CADLoadState::FilePendingLoadRequested), 5);
    EXPECT_EQ(static_cast<int>(CADLoadState::FileLoaded), 6);
    EXPECT_EQ(static_cast<int>(CADLoadState::FileLoadedUnloadRequested), 7);
}

TEST_F(NodeRecordTest, LoadRequestsChangeFourStatesOnly)
{
    EXPECT_THAT(afterRequest(&CADNodeRecord::requestLoad), testing::ElementsAre(1, 1, 2, 2, 5, 5, 6, 6, 8, 9));
}

TEST_F(NodeRecordTest, UnloadRequestsChangeFourStatesOnly)
{
    EXPECT_THAT(afterRequest(&CADNodeRecord::requestUnload), testing::ElementsAre(0, 0, 3, 3, 4, 4, 7, 7, 8, 9));
}

TEST_F(NodeRecordTest, RequestsCancelTheirOpposite)
{
    m_record.setState(CADLoadState::Realized);
    m_record.requestUnload();
    m_record.requestLoad();
    EXPECT_EQ(m_record.getState(), CADLoadState::Realized);
    m_record.setState(CADLoadState::FilePending);
    m_record.requestLoad();
    m_record.requestUnload();
    EXPECT_EQ(m_record.getState(), CADLoadState::FilePending);
}

TEST_F(NodeRecordTest, TheParentIsThatOfTheTimeOfSetNode)
{
    m_record.setNode(m_content);
    EXPECT_TRUE(m_record.getNode() == m_content);
    EXPECT_TRUE(m_record.getParentNode() == m_node);
    m_session.sceneRoot()->addChild(m_content);
    EXPECT_TRUE(m_record.getParentNode() == m_node);
    m_record.setNode(m_content);
    EXPECT_TRUE(m_record.getParentNode() == m_session.sceneRoot());
    m_record.setNode(osg::NodePtr());
    EXPECT_FALSE(m_record.getNode());
    EXPECT_FALSE(m_record.getParentNode());
}

TEST_F(NodeRecordTest, HoldsNoReferenceOnItsNode)
{
    m_record.setNode(m_content);
    EXPECT_EQ(m_content->getRefCount(), 1U);
}

TEST_F(NodeRecordTest, HoldsAReferenceOnItsMaterialGroup)
{
    const osg::RefPtr<osg::NodePtr> group(osg::makeNodeFor(osg::Group::create()));
    {
        CADNodeRecord record(nullptr);
        record.setMaterialNode(group);
        EXPECT_TRUE(record.getMaterialNode() == group.get());
        EXPECT_EQ(group->getRefCount(), 2U);
    }
    EXPECT_EQ(group->getRefCount(), 1U);
}

TEST_F(NodeRecordTest, ChildrenAreListedInTheirOrder)
{
    m_record.addChild(7);
    m_record.addChild(3);
    ASSERT_EQ(m_record.getChildCount(), 2U);
    EXPECT_EQ(m_record.getChild(0), 7U);
    EXPECT_EQ(m_record.getChild(1), 3U);
}

TEST_F(NodeRecordTest, ChildPastTheEndThrows)
{
    m_record.addChild(7);
    try {
        m_record.getChild(1);
        FAIL() << "no exception";
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ(error.what(), "childNum is out of range");
    }
}

TEST_F(NodeRecordTest, ActivitySwitchesTheLoadedContentAndNotTheNode)
{
    const osg::NodePtr second = addGroup(m_node, "second");
    m_record.setNode(m_node);
    m_record.setState(CADLoadState::FileLoaded);
    m_record.setActive(false);
    EXPECT_FALSE(m_record.isActive());
    EXPECT_FALSE(m_content->isActive());
    EXPECT_TRUE(m_node->isActive());
    EXPECT_TRUE(second->isActive());
    m_record.setActive(true);
    EXPECT_TRUE(m_content->isActive());
}

TEST_F(NodeRecordTest, ActivityWithoutLoadedContentIsOnlyNoted)
{
    m_record.setActive(false);
    EXPECT_FALSE(m_record.isActive());
    m_record.setNode(m_node);
    for (const auto state : {CADLoadState::Idle, CADLoadState::Realized, CADLoadState::FilePending,
                             CADLoadState::FileLoadedUnloadRequested}) {
        m_record.setState(state);
        m_record.setActive(false);
        EXPECT_TRUE(m_content->isActive());
    }
    m_record.setNode(m_content);
    m_record.setState(CADLoadState::FileLoaded);
    m_record.setActive(false);
    EXPECT_TRUE(m_content->isActive());
}

TEST_F(NodeRecordTest, ActivityIsEditedWithAllFields)
{
    m_record.setNode(m_node);
    m_record.setState(CADLoadState::FileLoaded);
    const osg::EditAudit audit;
    m_record.setActive(false);
    m_record.markLoaded();
    const osg::EditAudit::Record bracket{m_content->getContainerId(), "Node", 0xFFFFFFFF};
    EXPECT_THAT(audit.brackets(), testing::ElementsAre(bracket, bracket));
    EXPECT_THAT(audit.unbracketed(), testing::IsEmpty());
}

TEST_F(NodeRecordTest, ALoadActivatesAndTakesTheMarkAway)
{
    m_record.setNode(m_node);
    m_record.setState(CADLoadState::FileLoaded);
    m_record.setActive(false);
    m_record.setMarked(true);
    EXPECT_TRUE(m_record.isMarked());
    m_record.markLoaded();
    EXPECT_FALSE(m_record.isMarked());
    EXPECT_TRUE(m_record.isActive());
    EXPECT_TRUE(m_content->isActive());
}

} // namespace

} // namespace HB::Visualization
