#include "host/znKernelServices/zndReferenceNode.h"

#include "host/OSGSystem/Cast.h"
#include "host/znOpenSGExt/ExtReference.h"
#include "scene/EditAudit.h"
#include "tests/standalone/session/SessionTest.h"

namespace
{

class ReferenceNodeTest : public SessionTest
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

TEST_F(ReferenceNodeTest, AReferenceHasASmartFileOnceItsPathIsSet)
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

TEST_F(ReferenceNodeTest, ASmartFileWithoutAPathIsNone)
{
    osg::fcCast<osg::ExtReference>(m_reference->getCore())->setSmartFile(osg::FileReferenceBase::create());
    EXPECT_FALSE(zndReferenceNode(m_reference->getContainerId()).hasSmartReference());
}

TEST_F(ReferenceNodeTest, ARelativeSmartPathBecomesAbsolute)
{
    zndReferenceNode reference(m_reference->getContainerId());
    reference.setSmartPath(QStringLiteral("sub/../part.obj"));
    const auto core = osg::fcCast<osg::ExtReference>(m_reference->getCore());
    EXPECT_EQ(core->getSmartFile()->getPath(), (QDir::currentPath() + QStringLiteral("/part.obj")).toStdString());
}

TEST_F(ReferenceNodeTest, LoadingReplacesTheContentAndMarksTheReference)
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

TEST_F(ReferenceNodeTest, AFileThatCannotBeLoadedLeavesTheOldContent)
{
    addGroup(m_reference, "old");
    zndReferenceNode reference(m_reference->getContainerId());
    reference.setSmartPath(path(QStringLiteral("missing.obj")));
    reference.loadSmartReference();
    EXPECT_THAT(childNames(m_reference), testing::ElementsAre("old"));
    EXPECT_EQ(osg::fcCast<osg::ExtReference>(m_reference->getCore())->getState(), 0u);
    EXPECT_THAT(m_log, testing::ElementsAre(testing::HasSubstr("missing.obj")));
}

TEST_F(ReferenceNodeTest, AReferenceWithoutASmartFileLoadsNothing)
{
    addGroup(m_reference, "old");
    zndReferenceNode(m_reference->getContainerId()).loadSmartReference();
    zndReferenceNode(m_group->getContainerId()).loadSmartReference();
    EXPECT_THAT(childNames(m_reference), testing::ElementsAre("old"));
    EXPECT_TRUE(m_log.empty());
}

TEST_F(ReferenceNodeTest, ReferencesChangeWithinTheBracketsOfTheirFields)
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

} // namespace
