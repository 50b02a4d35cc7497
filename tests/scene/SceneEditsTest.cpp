#include "scene/SceneEdits.h"

#include "host/OSGSystem/Group.h"
#include "host/OSGSystem/Transform.h"
#include "scene/Attachments.h"
#include "scene/EditAudit.h"
#include "scene/Mesh.h"
#include "tests/scene/SceneGraphTest.h"

namespace
{

class SceneEditsTest : public SceneGraphTest
{
protected:
    using Records = std::vector<osg::EditAudit::Record>;

    void TearDown() override
    {
        m_node = osg::NodePtr();
        SceneGraphTest::TearDown();
    }

    /// The one bracket there was is that of `mask` on `container`, and it covered all changes.
    static void expectBracket(const osg::EditAudit& audit, const osg::FieldContainerPtr& container, const char* type,
                              osg::FieldMask mask)
    {
        EXPECT_EQ(audit.unbracketed(), Records());
        EXPECT_EQ(audit.idleBrackets(), Records());
        EXPECT_EQ(audit.brackets(), (Records{{container->getContainerId(), type, mask}}));
    }

    osg::RefPtr<osg::NodePtr> m_node{osg::Node::create()};
};

TEST_F(SceneEditsTest, AChildIsAddedLast)
{
    m_node->addChild(osg::Node::create());
    const osg::NodePtr child = osg::Node::create();
    const osg::EditAudit audit;
    osg::addChild(m_node, child);
    ASSERT_EQ(m_node->getNChildren(), 2u);
    EXPECT_TRUE(m_node->getChild(1) == child);
    expectBracket(audit, m_node.get(), "Node", osg::Node::ChildrenFieldMask);
}

TEST_F(SceneEditsTest, AMoveIsAnEditOfTheNewParentAlone)
{
    const osg::RefPtr<osg::NodePtr> former(osg::Node::create());
    const osg::NodePtr child = osg::Node::create();
    former->addChild(child);
    const osg::EditAudit audit;
    osg::addChild(m_node, child);
    EXPECT_EQ(former->getNChildren(), 0u);
    expectBracket(audit, m_node.get(), "Node", osg::Node::ChildrenFieldMask);
}

TEST_F(SceneEditsTest, AChildIsTakenOutAndGivenUp)
{
    const osg::RefPtr<osg::NodePtr> child(osg::Node::create());
    m_node->addChild(child);
    const osg::EditAudit audit;
    osg::subChild(m_node, child);
    EXPECT_EQ(m_node->getNChildren(), 0u);
    EXPECT_EQ(child->getRefCount(), 1u);
    expectBracket(audit, m_node.get(), "Node", osg::Node::ChildrenFieldMask);
}

TEST_F(SceneEditsTest, AnAttachmentTakesThePlaceOfOneOfItsGroup)
{
    m_node->addAttachment(osg::NameAttachment::create("first"));
    const osg::AttachmentPtr second = osg::NameAttachment::create("second");
    const osg::EditAudit audit;
    osg::attach(m_node.get(), second);
    EXPECT_TRUE(m_node->findAttachment(osg::NameAttachment::_type.getGroupId()) == second);
    EXPECT_EQ(osg::livingContainerCount(), 2u);
    expectBracket(audit, m_node.get(), "Node", osg::AttachmentContainer::AttachmentsFieldMask);
}

TEST_F(SceneEditsTest, AnAttachmentIsTakenAway)
{
    const osg::AttachmentPtr attachment = osg::NameAttachment::create("name");
    m_node->addAttachment(attachment);
    const osg::EditAudit audit;
    osg::detach(m_node.get(), attachment);
    EXPECT_FALSE(m_node->findAttachment(osg::NameAttachment::_type.getGroupId()));
    EXPECT_EQ(osg::livingContainerCount(), 1u);
    expectBracket(audit, m_node.get(), "Node", osg::AttachmentContainer::AttachmentsFieldMask);
}

TEST_F(SceneEditsTest, ACoreIsExchangedAndTheFormerOneGivenUp)
{
    m_node->setCore(osg::Group::create());
    const osg::TransformPtr core = osg::TransformBase::create();
    const osg::EditAudit audit;
    osg::exchangeCore(m_node, core);
    EXPECT_TRUE(m_node->getCore() == core);
    EXPECT_EQ(osg::livingContainerCount(), 2u);
    expectBracket(audit, m_node.get(), "Node", osg::Node::CoreFieldMask);
}

TEST_F(SceneEditsTest, AMeshIsExchanged)
{
    const osg::RefPtr<osg::GeometryPtr> geometry(osg::GeometryBase::create());
    const auto mesh = std::make_shared<const osg::Mesh>();
    const osg::EditAudit audit;
    osg::exchangeMesh(geometry, mesh);
    EXPECT_EQ(osg::GeometryAccess::sharedMesh(*geometry.get()), mesh);
    expectBracket(audit, geometry.get(), "Geometry", osg::GeometryBase::MeshFieldMask);
}

} // namespace
