#include "host/znKernel/znTypeConverter.h"

#include "tests/standalone/session/SessionTest.h"

namespace
{

using TypeConverterTest = SessionTest;

TEST_F(TypeConverterTest, ANodeGoesThroughItsWrapperAndBack)
{
    const osg::NodePtr node = addGroup(m_session.sceneRoot(), "part");
    const zndNode wrapper = znTypeConverter::convertNode(node);
    EXPECT_EQ(wrapper.getObjectId(), node->getContainerId());
    EXPECT_TRUE(wrapper.isValid());
    EXPECT_TRUE(znTypeConverter::convertNode(wrapper) == node);
    EXPECT_EQ(node->getRefCount(), 1u);
}

TEST_F(TypeConverterTest, NothingIsNothingBothWays)
{
    EXPECT_TRUE(znTypeConverter::convertNode(osg::NodePtr()).isNull());
    EXPECT_FALSE(znTypeConverter::convertNode(zndNode()));
}

TEST_F(TypeConverterTest, TheWrapperOfAGoneNodeGivesNothing)
{
    const osg::NodePtr node = addGroup(m_session.sceneRoot(), "part");
    const zndNode wrapper = znTypeConverter::convertNode(node);
    m_session.sceneRoot()->subChild(node);
    EXPECT_FALSE(znTypeConverter::convertNode(wrapper));
}

TEST_F(TypeConverterTest, TheWrapperOfSomethingElseGivesNoNode)
{
    EXPECT_FALSE(znTypeConverter::convertNode(zndNode(m_session.sceneRoot()->getCore()->getContainerId())));
}

TEST_F(TypeConverterTest, TheWrapperOfAnotherSessionGivesNothing)
{
    zndNode wrapper = znTypeConverter::convertNode(m_session.sceneRoot());
    wrapper.assign(m_session.id() + 1, wrapper.getObjectId());
    EXPECT_FALSE(znTypeConverter::convertNode(wrapper));
}

} // namespace
