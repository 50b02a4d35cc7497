#include "host/OSGSystem/FieldContainerPtr.h"

#include "host/OSGSystem/Material.h"
#include "host/OSGSystem/Node.h"
#include "scene/ContainerRegistry.h"
#include "tests/scene/SceneGraphTest.h"

namespace
{

using FieldContainerPtrTest = SceneGraphTest;

TEST_F(FieldContainerPtrTest, ANullPointerHasSizeZeroAndAnInvalidParentPosition)
{
    const osg::NodePtr null;
    EXPECT_EQ(null.get(), nullptr);
    EXPECT_EQ(null.getContainerSize(), 0);
    EXPECT_EQ(null.getParentFieldPos(), osg::FieldContainerPtrBase::InvalidParentEPos);
    EXPECT_TRUE(null == osg::NullFC);
    EXPECT_FALSE(null);
}

TEST_F(FieldContainerPtrTest, APointerIsTwoSmallNumbersAndAnAddress)
{
    EXPECT_EQ(sizeof(osg::NodePtr), 16u);
    EXPECT_EQ(sizeof(osg::MaterialPtr), 16u);
}

TEST_F(FieldContainerPtrTest, ValidityAndEqualityLookAtTheAddressAlone)
{
    const osg::NodePtr node = osg::Node::create();
    const osg::NodePtr bound(node.get(), 7, 3);
    EXPECT_EQ(bound.getContainerSize(), 7);
    EXPECT_EQ(bound.getParentFieldPos(), 3);
    EXPECT_TRUE(bound == node);
    EXPECT_TRUE(osg::NodePtr(nullptr, 7, 3) == osg::NullFC);
    discard(node);
}

TEST_F(FieldContainerPtrTest, CopyingAPointerLeavesTheCountAlone)
{
    const osg::RefPtr<osg::NodePtr> holder(osg::Node::create());
    const osg::NodePtr copy = holder;
    EXPECT_EQ(copy->getRefCount(), 1u);
    copy.addRef();
    EXPECT_EQ(copy->getRefCount(), 2u);
    copy.subRef();
    EXPECT_EQ(copy->getRefCount(), 1u);
}

TEST_F(FieldContainerPtrTest, AHolderMovesTheCount)
{
    const osg::RefPtr<osg::NodePtr> first(osg::Node::create());
    osg::RefPtr<osg::NodePtr> second(osg::Node::create());
    second = first;
    EXPECT_EQ(first->getRefCount(), 2u);
    second = osg::NodePtr();
    EXPECT_EQ(first->getRefCount(), 1u);
    EXPECT_EQ(osg::livingContainerCount(), 1u);
}

} // namespace
