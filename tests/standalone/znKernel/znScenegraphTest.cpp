#include "host/znKernel/znScenegraph.h"

#include "tests/standalone/session/SessionTest.h"

namespace
{

using ScenegraphTest = SessionTest;

TEST_F(ScenegraphTest, TheRootIsAGroupWithoutAParent)
{
    const osg::NodePtr root = znScenegraph::getRoot();
    ASSERT_TRUE(root);
    EXPECT_TRUE(root == m_session.sceneRoot());
    EXPECT_STREQ(root->getCore()->getType().getName(), "Group");
    EXPECT_FALSE(root->getParent());
}

TEST_F(ScenegraphTest, TheSceneIsEmptyWhileNothingHangsBelowTheRoot)
{
    EXPECT_TRUE(znScenegraph::isEmpty());
    const osg::NodePtr node = addGroup(znScenegraph::getRoot(), "part");
    EXPECT_FALSE(znScenegraph::isEmpty());
    znScenegraph::getRoot()->subChild(node);
    EXPECT_TRUE(znScenegraph::isEmpty());
}

TEST_F(ScenegraphTest, TheSelectionComesAndGoes)
{
    EXPECT_FALSE(znScenegraph::getSelectedNode());
    const osg::NodePtr node = addGroup(znScenegraph::getRoot(), "part");
    m_session.select(node);
    EXPECT_TRUE(znScenegraph::getSelectedNode() == node);
    EXPECT_EQ(node->getRefCount(), 1u);
    m_session.select(osg::NodePtr());
    EXPECT_FALSE(znScenegraph::getSelectedNode());
}

TEST_F(ScenegraphTest, ASelectedNodeThatGoesTakesTheSelectionWithIt)
{
    const osg::NodePtr node = addGroup(znScenegraph::getRoot(), "part");
    m_session.select(node);
    znScenegraph::getRoot()->subChild(node);
    EXPECT_FALSE(znScenegraph::getSelectedNode());
}

} // namespace
