#include "host/OSGSystem/Cast.h"
#include "host/znKernelServices/zndReferenceNode.h"
#include "host/znOpenSGExt/ExtReference.h"
#include "standalone/OSGSystem/EditAudit.h"
#include "tests/standalone/session/SessionTest.h"

#include <limits>

namespace
{

class WrappersTest : public SessionTest
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

TEST_F(WrappersTest, AnEmptyWrapperStandsForNothing)
{
    const zndReferenceNode reference(0);
    EXPECT_TRUE(reference.isNull());
    EXPECT_FALSE(reference.isValid());
    EXPECT_EQ(reference.getObjectId(), 0u);
    EXPECT_EQ(reference.getSessionId(), 0u);
    EXPECT_TRUE(zndNode().isNull());
}

TEST_F(WrappersTest, AWrapperHasTheIdsOfItsSessionAndItsObject)
{
    const zndNode node(m_group->getContainerId());
    EXPECT_FALSE(node.isNull());
    EXPECT_TRUE(node.isValid());
    EXPECT_EQ(node.getObjectId(), m_group->getContainerId());
    EXPECT_EQ(node.getSessionId(), m_session.id());
    EXPECT_NE(m_session.id(), 0u);
}

TEST_F(WrappersTest, CopyingTakesTheTwoIdsAndNothingElse)
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

TEST_F(WrappersTest, AssigningMakesAWrapperStandForAnotherObject)
{
    zndReferenceNode reference(0);
    reference.assign(m_session.id(), m_reference->getContainerId());
    EXPECT_TRUE(reference.isValid());
    reference.assign(0, 0);
    EXPECT_TRUE(reference.isNull());
}

TEST_F(WrappersTest, WhatTheObjectIsInTheSceneDecidesItsType)
{
    const zndNode group(m_group->getContainerId()), reference(m_reference->getContainerId());
    EXPECT_TRUE(reference.isTypeOf(&zndReferenceNode::staticMetaObject));
    EXPECT_TRUE(reference.isTypeOf(&zndNode::staticMetaObject));
    EXPECT_TRUE(reference.isTypeOf(&zndSceneObject::staticMetaObject));
    EXPECT_FALSE(group.isTypeOf(&zndReferenceNode::staticMetaObject));
    EXPECT_TRUE(group.isTypeOf(&zndNode::staticMetaObject));
    EXPECT_FALSE(zndReferenceNode(m_group->getContainerId()).isTypeOf(&zndReferenceNode::staticMetaObject));
}

TEST_F(WrappersTest, AContainerThatIsNoNodeIsASceneObject)
{
    const zndNode core(m_group->getCore()->getContainerId());
    EXPECT_TRUE(core.isValid());
    EXPECT_TRUE(core.isTypeOf(&zndSceneObject::staticMetaObject));
    EXPECT_FALSE(core.isTypeOf(&zndNode::staticMetaObject));
}

TEST_F(WrappersTest, AnObjectThatIsGoneIsOfNoType)
{
    const zndNode reference(m_reference->getContainerId());
    m_session.sceneRoot()->subChild(m_reference);
    EXPECT_FALSE(reference.isValid());
    EXPECT_FALSE(reference.isNull());
    EXPECT_FALSE(reference.isTypeOf(&zndReferenceNode::staticMetaObject));
    EXPECT_FALSE(reference.isTypeOf(&zndObject::staticMetaObject));
    EXPECT_FALSE(zndNode().isTypeOf(&zndObject::staticMetaObject));
}

TEST_F(WrappersTest, AnIdBeyondThirtyTwoBitsIsNobodys)
{
    const zndNode node((std::uint64_t(1) << 32) + m_group->getContainerId());
    EXPECT_FALSE(node.isValid());
    EXPECT_FALSE(zndNode(std::numeric_limits<std::uint64_t>::max()).isValid());
}

TEST_F(WrappersTest, SettingTheNameNamesTheNode)
{
    zndNode node(m_group->getContainerId());
    node.setName(QString::fromUtf8("Gehäuse 壳"));
    EXPECT_EQ(nameOf(m_group), "Gehäuse 壳");
    zndNode().setName(QStringLiteral("nobody"));
}

TEST_F(WrappersTest, AReferenceHasASmartFileOnceItsPathIsSet)
{
    zndReferenceNode reference(m_reference->getContainerId());
    EXPECT_FALSE(reference.hasSmartReference());
    reference.setSmartPath(QStringLiteral("/teile/größe.obj"));
    EXPECT_TRUE(reference.hasSmartReference());
    const auto core = osg::fcCast<osg::ExtReference>(m_reference->getCore());
    EXPECT_EQ(core->getSmartFile()->getPath(), "/teile/größe.obj");
    EXPECT_FALSE(core->getSourceFile());
    EXPECT_EQ(core->getState(), 0u);
}

TEST_F(WrappersTest, ASmartFileWithoutAPathIsNone)
{
    osg::fcCast<osg::ExtReference>(m_reference->getCore())->setSmartFile(osg::FileReferenceBase::create());
    EXPECT_FALSE(zndReferenceNode(m_reference->getContainerId()).hasSmartReference());
}

TEST_F(WrappersTest, ARelativeSmartPathBecomesAbsolute)
{
    zndReferenceNode reference(m_reference->getContainerId());
    reference.setSmartPath(QStringLiteral("sub/../part.obj"));
    const auto core = osg::fcCast<osg::ExtReference>(m_reference->getCore());
    EXPECT_EQ(core->getSmartFile()->getPath(), (QDir::currentPath() + QStringLiteral("/part.obj")).toStdString());
}

TEST_F(WrappersTest, LoadingReplacesTheContentAndMarksTheReference)
{
    addGroup(m_reference, "old");
    zndReferenceNode reference(m_reference->getContainerId());
    reference.setSmartPath(writeTriangle(QStringLiteral("part.obj")));
    reference.loadSmartReference();
    ASSERT_EQ(m_reference->getNChildren(), 1u);
    EXPECT_STREQ(m_reference->getChild(0)->getCore()->getType().getName(), "Geometry");
    EXPECT_EQ(osg::fcCast<osg::ExtReference>(m_reference->getCore())->getState(), 2u);
    reference.loadSmartReference();
    EXPECT_EQ(m_reference->getNChildren(), 1u);
}

TEST_F(WrappersTest, AFileThatCannotBeLoadedLeavesTheOldContent)
{
    addGroup(m_reference, "old");
    zndReferenceNode reference(m_reference->getContainerId());
    reference.setSmartPath(path(QStringLiteral("missing.obj")));
    reference.loadSmartReference();
    EXPECT_THAT(childNames(m_reference), testing::ElementsAre("old"));
    EXPECT_EQ(osg::fcCast<osg::ExtReference>(m_reference->getCore())->getState(), 0u);
    EXPECT_THAT(m_log, testing::ElementsAre(testing::HasSubstr("missing.obj")));
}

TEST_F(WrappersTest, AReferenceWithoutASmartFileLoadsNothing)
{
    addGroup(m_reference, "old");
    zndReferenceNode(m_reference->getContainerId()).loadSmartReference();
    zndReferenceNode(m_group->getContainerId()).loadSmartReference();
    EXPECT_THAT(childNames(m_reference), testing::ElementsAre("old"));
    EXPECT_TRUE(m_log.empty());
}

TEST_F(WrappersTest, ReferencesChangeWithinTheBracketsOfTheirFields)
{
    const QString file = writeTriangle(QStringLiteral("part.obj"));
    const std::uint32_t core = m_reference->getCore()->getContainerId();
    zndReferenceNode reference(m_reference->getContainerId());
    const osg::EditAudit audit;
    reference.setSmartPath(file);
    EXPECT_THAT(audit.unbracketed(), testing::IsEmpty());
    reference.loadSmartReference();
    const auto record = [](std::uint32_t id, const char* type, osg::FieldMask mask) {
        return osg::EditAudit::Record{id, type, mask};
    };
    EXPECT_THAT(audit.brackets(),
                testing::IsSupersetOf({record(core, "ExtReference", osg::ExtReferenceBase::SmartFileFieldMask),
                                       record(core, "ExtReference", osg::ExtReferenceBase::StateFieldMask),
                                       record(m_reference->getContainerId(), "Node", osg::Node::ChildrenFieldMask)}));
    EXPECT_EQ(audit.openBrackets(), 0u);
}

TEST(WrappersOfAFormerSession, AreNeverValid)
{
    zndNode former;
    {
        znStandaloneSession first;
        former = zndNode(first.sceneRoot()->getContainerId());
        EXPECT_TRUE(former.isValid());
    }
    EXPECT_FALSE(former.isValid());
    const znStandaloneSession second;
    EXPECT_EQ(second.sceneRoot()->getContainerId(), former.getObjectId());
    EXPECT_FALSE(former.isValid());
    EXPECT_FALSE(former.isTypeOf(&zndNode::staticMetaObject));
}

} // namespace
