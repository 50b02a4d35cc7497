#include "scene/NodeWalk.h"

#include "tests/scene/SceneGraphTest.h"

#include "host/OSGSystem/FieldContainerPtr.h"

#include <random>

namespace
{

class NodeWalkTest : public SceneGraphTest
{
};

/// As a walk with a plain list of nodes gives them.
std::vector<osg::NodePtr> expectedOf(const osg::NodePtr& root)
{
    std::vector<osg::NodePtr> nodes{root};
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        const osg::NodePtr node = nodes[i];
        for (unsigned child = 0; child < node->getNChildren(); ++child)
            nodes.push_back(node->getChild(child));
    }
    return nodes;
}

TEST_F(NodeWalkTest, NothingIsBelowNull)
{
    EXPECT_TRUE(osg::parentsFirst({}).empty());
}

TEST_F(NodeWalkTest, ANodeAloneIsAllThereIs)
{
    const osg::RefPtr<osg::NodePtr> root(osg::Node::create());
    EXPECT_EQ(osg::parentsFirst(root), std::vector<osg::NodePtr>{root.get()});
}

TEST_F(NodeWalkTest, EachParentComesBeforeItsChildrenLevelByLevel)
{
    std::mt19937 random(2);
    const osg::RefPtr<osg::NodePtr> root(osg::Node::create());
    std::vector<osg::NodePtr> parents{root};
    for (int i = 0; i < 2000; ++i) {
        const osg::NodePtr node = osg::Node::create();
        parents[random() % parents.size()]->addChild(node);
        if (i % 3 == 0)
            parents.push_back(node);
    }
    // A list whose gap is not at its end.
    root->subChild(root->getChild(0));
    EXPECT_EQ(osg::parentsFirst(root), expectedOf(root));
}

} // namespace
