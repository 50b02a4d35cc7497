// Trees that a recursive reader or writer would not survive.

#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/Transform3D.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "tests/files/scenefile/SceneFileTest.h"

namespace
{

using LargeTreeTest = SceneFileTest;
using osg::NodePtr;

TEST_F(LargeTreeTest, AChainOfAMillionNodes)
{
    NodePtr top = osg::Node::create();
    osg::setName(top, "deepest");
    for (int i = 0; i < 1'000'000; ++i) {
        const NodePtr parent = osg::Node::create();
        parent->addChild(top);
        top = parent;
    }
    const NodeRef back = roundTrip(NodeRef(top));
    NodePtr step = back;
    int depth = 0;
    for (; step->getNChildren() == 1; ++depth)
        step = step->getChild(0);
    EXPECT_EQ(depth, 1'000'000);
    EXPECT_STREQ(osg::getName(step), "deepest");
}

TEST_F(LargeTreeTest, ANodeWithManyChildrenWithCoresAndNames)
{
    const NodeRef root(osg::Node::create());
    for (unsigned i = 0; i < 100'000; ++i) {
        const osg::Transform3DPtr core = osg::Transform3DBase::create();
        core->setTranslation({float(i), 0, 0});
        root->addChild(osg::makeNodeFor(core));
        osg::setName(root->getChild(i), "part " + std::to_string(i));
    }
    const NodeRef back = roundTrip(root);
    ASSERT_EQ(back->getNChildren(), 100'000u);
    for (const unsigned i : {0u, 1u, 49'999u, 99'999u}) {
        const auto* core = static_cast<const osg::Transform3D*>(back->getChild(i)->getCore().get());
        EXPECT_EQ(core->getTranslation(), (osg::Vec3f{float(i), 0, 0}));
        EXPECT_EQ(osg::getName(back->getChild(i)), "part " + std::to_string(i));
    }
}

} // namespace
