#include "host/znKernelServices/zndObject.h"

#include "host/znKernelServices/zndReferenceNode.h"
#include "host/znOpenSGExt/ExtReference.h"
#include "tests/standalone/session/SessionTest.h"

#include <limits>

namespace
{

class ObjectTest : public SessionTest
{
protected:
    osg::NodePtr addReference(const char* name)
    {
        const osg::NodePtr node = osg::makeNodeFor(osg::ExtReferenceBase::create());
        osg::setName(node, name);
        m_session.sceneRoot()->addChild(node);
        return node;
    }

    const osg::NodePtr m_group = addGroup(m_session.sceneRoot(), "group");
    const osg::NodePtr m_reference = addReference("reference");
};

TEST_F(ObjectTest, AnEmptyWrapperStandsForNothing)
{
    const zndReferenceNode reference(0);
    EXPECT_TRUE(reference.isNull());
    EXPECT_FALSE(reference.isValid());
    EXPECT_EQ(reference.getObjectId(), 0u);
    EXPECT_EQ(reference.getSessionId(), 0u);
    EXPECT_TRUE(zndNode().isNull());
}

TEST_F(ObjectTest, AWrapperHasTheIdsOfItsSessionAndItsObject)
{
    const zndNode node(m_group->getContainerId());
    EXPECT_FALSE(node.isNull());
    EXPECT_TRUE(node.isValid());
    EXPECT_EQ(node.getObjectId(), m_group->getContainerId());
    EXPECT_EQ(node.getSessionId(), m_session.id());
    EXPECT_NE(m_session.id(), 0u);
}

TEST_F(ObjectTest, CopyingTakesTheTwoIdsAndNothingElse)
{
    QObject parent;
    auto* original = new zndNode(m_group->getContainerId());
    original->setParent(&parent);
    original->setObjectName(QStringLiteral("original"));
    zndNode copy(*original);
    EXPECT_EQ(copy.getObjectId(), m_group->getContainerId());
    EXPECT_EQ(copy.getSessionId(), m_session.id());
    EXPECT_EQ(copy.parent(), nullptr);
    EXPECT_EQ(copy.objectName(), QString());
    copy = zndNode(m_reference->getContainerId());
    EXPECT_EQ(copy.getObjectId(), m_reference->getContainerId());
    EXPECT_EQ(original->getObjectId(), m_group->getContainerId());
}

TEST_F(ObjectTest, AssigningMakesAWrapperStandForAnotherObject)
{
    zndReferenceNode reference(0);
    reference.assign(m_session.id(), m_reference->getContainerId());
    EXPECT_TRUE(reference.isValid());
    reference.assign(0, 0);
    EXPECT_TRUE(reference.isNull());
}

TEST_F(ObjectTest, WhatTheObjectIsInTheSceneDecidesItsType)
{
    const zndNode group(m_group->getContainerId()), reference(m_reference->getContainerId());
    EXPECT_TRUE(reference.isTypeOf(&zndReferenceNode::staticMetaObject));
    EXPECT_TRUE(reference.isTypeOf(&zndNode::staticMetaObject));
    EXPECT_TRUE(reference.isTypeOf(&zndSceneObject::staticMetaObject));
    EXPECT_FALSE(group.isTypeOf(&zndReferenceNode::staticMetaObject));
    EXPECT_TRUE(group.isTypeOf(&zndNode::staticMetaObject));
    EXPECT_FALSE(zndReferenceNode(m_group->getContainerId()).isTypeOf(&zndReferenceNode::staticMetaObject));
}

TEST_F(ObjectTest, AContainerThatIsNoNodeIsASceneObject)
{
    const zndNode core(m_group->getCore()->getContainerId());
    EXPECT_TRUE(core.isValid());
    EXPECT_TRUE(core.isTypeOf(&zndSceneObject::staticMetaObject));
    EXPECT_FALSE(core.isTypeOf(&zndNode::staticMetaObject));
}

TEST_F(ObjectTest, AnObjectThatIsGoneIsOfNoType)
{
    const zndNode reference(m_reference->getContainerId());
    m_session.sceneRoot()->subChild(m_reference);
    EXPECT_FALSE(reference.isValid());
    EXPECT_FALSE(reference.isNull());
    EXPECT_FALSE(reference.isTypeOf(&zndReferenceNode::staticMetaObject));
    EXPECT_FALSE(reference.isTypeOf(&zndObject::staticMetaObject));
    EXPECT_FALSE(zndNode().isTypeOf(&zndObject::staticMetaObject));
}

TEST_F(ObjectTest, AnIdBeyondThirtyTwoBitsIsNobodys)
{
    const zndNode node((std::uint64_t(1) << 32) + m_group->getContainerId());
    EXPECT_FALSE(node.isValid());
    EXPECT_FALSE(zndNode(std::numeric_limits<std::uint64_t>::max()).isValid());
}

TEST(ObjectsOfAFormerSession, AreNeverValid)
{
    zndNode former;
    {
        zn::StandaloneSession first;
        former = zndNode(first.sceneRoot()->getContainerId());
        EXPECT_TRUE(former.isValid());
    }
    EXPECT_FALSE(former.isValid());
    const zn::StandaloneSession second;
    EXPECT_EQ(second.sceneRoot()->getContainerId(), former.getObjectId());
    EXPECT_FALSE(former.isValid());
    EXPECT_FALSE(former.isTypeOf(&zndNode::staticMetaObject));
}

} // namespace
