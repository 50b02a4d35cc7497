#include "scene/EditAudit.h"

#include "host/OSGSystem/Edit.h"
#include "host/OSGSystem/Group.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/Node.h"
#include "host/OSGSystem/Transform.h"
#include "tests/scene/SceneGraphTest.h"

namespace
{

using EditAuditTest = SceneGraphTest;
using Records = std::vector<osg::EditAudit::Record>;

TEST_F(EditAuditTest, AChangeWithinItsBracketIsInOrder)
{
    const osg::RefPtr<osg::NodePtr> node(osg::Node::create());
    const osg::EditAudit audit;
    osg::beginEditCP(node.get(), osg::Node::CoreFieldMask, 1);
    node->setCore(osg::Group::create());
    osg::endEditCP(node.get(), osg::Node::CoreFieldMask, 1);
    EXPECT_EQ(audit.unbracketed(), Records());
    EXPECT_EQ(audit.idleBrackets(), Records());
    EXPECT_EQ(audit.brackets(), (Records{{node->getContainerId(), "Node", osg::Node::CoreFieldMask}}));
    EXPECT_EQ(audit.openBrackets(), 0u);
}

TEST_F(EditAuditTest, AChangeWithoutABracketIsToldWithItsMask)
{
    const osg::RefPtr<osg::TransformPtr> transform(osg::TransformBase::create());
    const osg::EditAudit audit;
    transform->setMatrix(osg::Matrix());
    EXPECT_EQ(audit.unbracketed(),
              (Records{{transform->getContainerId(), "Transform", osg::TransformBase::MatrixFieldMask}}));
}

TEST_F(EditAuditTest, ABracketThatNamesAnotherFieldDoesNotCover)
{
    const osg::RefPtr<osg::NodePtr> node(osg::Node::create());
    const osg::EditAudit audit;
    osg::beginEditCP(node.get(), osg::Node::CoreFieldMask, 1);
    node->addChild(osg::Node::create());
    osg::endEditCP(node.get(), osg::Node::CoreFieldMask, 1);
    EXPECT_EQ(audit.unbracketed().size(), 1u);
    EXPECT_EQ(audit.idleBrackets().size(), 1u);
}

TEST_F(EditAuditTest, ABracketOfAllFieldsCoversEachField)
{
    const osg::RefPtr<osg::NodePtr> node(osg::Node::create());
    const osg::EditAudit audit;
    osg::beginEditCP(node.get(), osg::AllFieldsMask, 1);
    node->addChild(osg::Node::create());
    node->setActive(false);
    osg::endEditCP(node.get(), osg::AllFieldsMask, 1);
    EXPECT_EQ(audit.unbracketed(), Records());
}

TEST_F(EditAuditTest, BracketsNestAndMustMatch)
{
    const osg::RefPtr<osg::NodePtr> node(osg::Node::create());
    const osg::EditAudit audit;
    osg::beginEditCP(node.get(), osg::Node::CoreFieldMask, 1);
    osg::beginEditCP(node.get(), osg::Node::ActiveFieldMask, 1);
    EXPECT_EQ(audit.openBrackets(), 2u);
    node->setActive(true);
    osg::endEditCP(node.get(), osg::Node::ActiveFieldMask, 1);
    EXPECT_EQ(audit.openBrackets(), 1u);
    osg::endEditCP(node.get(), osg::Node::ChildrenFieldMask, 1);
    EXPECT_EQ(audit.unmatchedEnds().size(), 1u);
    osg::endEditCP(node.get(), osg::Node::CoreFieldMask, 1);
    EXPECT_EQ(audit.openBrackets(), 0u);
}

TEST_F(EditAuditTest, NamesAreSetWithinTheirOwnBracket)
{
    const osg::RefPtr<osg::NodePtr> node(osg::Node::create());
    const osg::EditAudit audit;
    osg::setName(node.get(), "lid");
    EXPECT_EQ(audit.unbracketed(), Records());
    EXPECT_EQ(audit.brackets(),
              (Records{{node->getContainerId(), "Node", osg::AttachmentContainer::AttachmentsFieldMask}}));
}

TEST_F(EditAuditTest, NullContainersAreIgnoredAndNothingWatchesAfterTheEnd)
{
    {
        const osg::EditAudit audit;
        osg::beginEditCP(osg::NodePtr(), osg::AllFieldsMask, 1);
        osg::endEditCP(osg::NodePtr(), osg::AllFieldsMask, 1);
        EXPECT_EQ(audit.brackets(), Records());
    }
    EXPECT_EQ(osg::EditAudit::active(), nullptr);
}

} // namespace
