#include "scene/ContainerRegistry.h"

#include "host/OSGSystem/FieldContainerFactory.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/Node.h"
#include "tests/scene/SceneGraphTest.h"

namespace
{

using ContainerRegistryTest = SceneGraphTest;

TEST_F(ContainerRegistryTest, IdsAreDenseFromOneInOrderAndNotReused)
{
    const osg::NodePtr first = osg::Node::create();
    const osg::NodePtr second = osg::Node::create();
    EXPECT_EQ(first->getContainerId(), 1u);
    EXPECT_EQ(second->getContainerId(), 2u);
    discard(second);
    const osg::NodePtr third = osg::Node::create();
    EXPECT_EQ(third->getContainerId(), 3u);
    discard(first);
    discard(third);
}

TEST_F(ContainerRegistryTest, TheFactoryFindsTheLivingByTheirIds)
{
    const osg::NodePtr node = osg::Node::create();
    osg::FieldContainerFactory* factory = osg::FieldContainerFactory::the();
    EXPECT_TRUE(factory->getContainer(1) == node);
    EXPECT_TRUE(factory->getContainer(0) == osg::NullFC);
    EXPECT_TRUE(factory->getContainer(2) == osg::NullFC);
    EXPECT_TRUE(factory->getContainer(0xFFFFFFFFu) == osg::NullFC);
    discard(node);
    EXPECT_TRUE(factory->getContainer(1) == osg::NullFC);
}

TEST_F(ContainerRegistryTest, ASweepTakesWhatIsLeftAndStartsTheIdsAnew)
{
    const osg::NodePtr parent = osg::Node::create();
    parent.addRef();
    osg::setName(parent, "forgotten");
    parent->addChild(osg::Node::create());
    const std::vector<osg::LivingContainer> left = osg::livingContainers();
    ASSERT_EQ(left.size(), 3u);
    EXPECT_EQ(left[0].type, "Node");
    EXPECT_EQ(left[0].name, "forgotten");
    EXPECT_EQ(left[0].references, 1u);
    osg::sweepContainers();
    EXPECT_EQ(osg::livingContainerCount(), 0u);
    const osg::NodePtr next = osg::Node::create();
    EXPECT_EQ(next->getContainerId(), 1u);
    discard(next);
}

} // namespace
