#include "host/OSGSystem/Names.h"

#include "host/OSGSystem/Node.h"
#include "scene/ContainerRegistry.h"
#include "tests/scene/SceneGraphTest.h"

namespace
{

using NamesTest = SceneGraphTest;

TEST_F(NamesTest, NamesComeGoAndChange)
{
    const osg::RefPtr<osg::NodePtr> node(osg::Node::create());
    EXPECT_EQ(osg::getName(node.get()), nullptr);
    osg::setName(node.get(), "Gehäuse 壳体");
    EXPECT_STREQ(osg::getName(node.get()), "Gehäuse 壳体");
    osg::setName(node.get(), "lid");
    EXPECT_STREQ(osg::getName(node.get()), "lid");
    osg::setName(node.get(), "");
    EXPECT_EQ(osg::getName(node.get()), nullptr);
    EXPECT_EQ(osg::getName(osg::NodePtr()), nullptr);
    EXPECT_EQ(osg::livingContainerCount(), 1u);
}

} // namespace
