#include "host/znKernel/znScenegraph.h"

#include "files/SceneReaders.h"
#include "files/scenefile/SceneFile.h"
#include "host/OSGSystem/Transform.h"
#include "host/znOpenSGExt/ExtReference.h"
#include "scene/EditAudit.h"
#include "tests/standalone/session/SessionTest.h"

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace
{

class ReferenceReloadTest : public SessionTest
{
protected:
    ReferenceReloadTest() { m_reference->setCore(m_core); }

    void refer(const QString& path)
    {
        const osg::FileReferencePtr file = osg::FileReference::create();
        file->setPath(path.toStdString());
        m_core->setSourceFile(file);
    }
    bool reload(bool replace = true, bool select = false)
    {
        return znScenegraph::reloadFromFile(m_reference, m_loaded, m_contents, replace, false, select);
    }
    /// A reader of files with the extension "fake" that gives this root.
    void readFakeFilesAs(const osg::NodePtr& root)
    {
        m_session.state<files::SceneReaders>().add(
            {QStringLiteral("test"), {QStringLiteral("fake")}, [root](files::ReadTask&) { return root; }});
        refer(write(QStringLiteral("part.fake"), "x"));
    }

    const osg::NodePtr m_reference = addGroup(m_session.sceneRoot(), "reference");
    const osg::ExtReferencePtr m_core = osg::ExtReference::create();
    osg::NodePtr m_loaded;
    std::vector<osg::NodePtr> m_contents;
};

TEST_F(ReferenceReloadTest, ContentOfTheFileHangsBelowTheReference)
{
    refer(writeTriangle(QStringLiteral("part.obj")));
    EXPECT_TRUE(reload());
    ASSERT_EQ(m_reference->getNChildren(), 1U);
    EXPECT_STREQ(m_reference->getChild(0)->getCore()->getType().getName(), "Geometry");
    EXPECT_EQ(m_core->getState(), 2U);
    EXPECT_TRUE(m_loaded == m_reference);
    ASSERT_EQ(m_contents.size(), 1U);
    EXPECT_TRUE(m_contents[0] == m_reference->getChild(0));
    EXPECT_FALSE(m_session.selectedNode());
}

TEST_F(ReferenceReloadTest, ChildrenOfAWrapperTakeItsPlaceInTheirOrder)
{
    const osg::NodePtr root = osg::makeNodeFor(osg::Group::create());
    addGroup(root, "first");
    addGroup(root, "second");
    readFakeFilesAs(root);
    EXPECT_TRUE(reload());
    EXPECT_THAT(childNames(m_reference), ElementsAre("first", "second"));
}

TEST_F(ReferenceReloadTest, RootThatPlacesItsContentStays)
{
    const osg::NodePtr root = osg::makeNodeFor(osg::Transform::create());
    addGroup(root, "inner");
    readFakeFilesAs(root);
    EXPECT_TRUE(reload());
    EXPECT_THAT(childNames(m_reference), ElementsAre("part"));
    EXPECT_THAT(childNames(m_reference->getChild(0)), ElementsAre("inner"));
}

TEST_F(ReferenceReloadTest, RootOfASceneFileThatOnlyNamesItsSourceGoes)
{
    const osg::NodePtr root = osg::makeNodeFor(osg::ExtReference::create());
    addGroup(root, "part");
    readFakeFilesAs(root);
    EXPECT_TRUE(reload());
    EXPECT_THAT(childNames(m_reference), ElementsAre("part"));
}

TEST_F(ReferenceReloadTest, WhatHungThereGoesOrStaysAsIsAsked)
{
    addGroup(m_reference, "old");
    refer(writeTriangle(QStringLiteral("part.obj")));
    EXPECT_TRUE(reload(false));
    ASSERT_EQ(m_reference->getNChildren(), 2U);
    EXPECT_EQ(childNames(m_reference)[0], "old");
    ASSERT_EQ(m_contents.size(), 1U);
    EXPECT_TRUE(m_contents[0] == m_reference->getChild(1));
    EXPECT_TRUE(reload(true));
    EXPECT_EQ(m_reference->getNChildren(), 1U);
    EXPECT_NE(childNames(m_reference)[0], "old");
}

TEST_F(ReferenceReloadTest, TheReferenceBecomesTheSelectionIfThatIsWanted)
{
    refer(writeTriangle(QStringLiteral("part.obj")));
    EXPECT_TRUE(reload(true, true));
    EXPECT_TRUE(m_session.selectedNode() == m_reference);
}

TEST_F(ReferenceReloadTest, ASmartFileServesWhereThereIsNoSourceFile)
{
    const osg::FileReferencePtr file = osg::FileReference::create();
    file->setPath(writeTriangle(QStringLiteral("smart.obj")).toStdString());
    m_core->setSmartFile(file);
    EXPECT_TRUE(reload());
    EXPECT_EQ(m_reference->getNChildren(), 1U);
}

TEST_F(ReferenceReloadTest, AFileThatCannotBeReadChangesNothing)
{
    addGroup(m_reference, "old");
    refer(path(QStringLiteral("missing.obj")));
    EXPECT_FALSE(reload());
    EXPECT_THAT(childNames(m_reference), ElementsAre("old"));
    EXPECT_EQ(m_core->getState(), 0U);
    EXPECT_FALSE(m_loaded);
    EXPECT_THAT(m_contents, IsEmpty());
    EXPECT_THAT(m_log, ElementsAre(HasSubstr("missing.obj")));
}

TEST_F(ReferenceReloadTest, NodesThatReferToNoFileAreNotReloaded)
{
    EXPECT_FALSE(reload());
    m_reference->setCore(osg::Group::create());
    EXPECT_FALSE(reload());
    EXPECT_FALSE(znScenegraph::reloadFromFile(osg::NodePtr(), m_loaded, m_contents, true, false, false));
    EXPECT_THAT(m_log, IsEmpty());
}

TEST_F(ReferenceReloadTest, ChangesStandInTheBracketsOfTheirFields)
{
    refer(writeTriangle(QStringLiteral("part.obj")));
    const osg::EditAudit audit;
    reload();
    EXPECT_THAT(
        audit.brackets(),
        testing::IsSupersetOf(
            {osg::EditAudit::Record{m_reference->getContainerId(), "Node", osg::Node::ChildrenFieldMask},
             osg::EditAudit::Record{m_core->getContainerId(), "ExtReference", osg::ExtReference::StateFieldMask}}));
    EXPECT_EQ(audit.openBrackets(), 0U);
}

} // namespace
