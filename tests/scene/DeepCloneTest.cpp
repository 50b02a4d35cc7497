#include "scene/DeepClone.h"

#include "host/OSGSystem/Geometry.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/SimpleMaterial.h"
#include "host/OSGSystem/Transform3D.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "scene/EditAudit.h"
#include "scene/Tags.h"
#include "tests/scene/SceneGraphTest.h"

namespace
{

using DeepCloneTest = SceneGraphTest;
using osg::NodePtr;

NodePtr named(const char* name, const osg::NodeCorePtr& core = {})
{
    const NodePtr node = osg::Node::create();
    osg::setName(node, name);
    node->setCore(core);
    return node;
}

osg::Transform3DPtr movedBy(float x)
{
    const osg::Transform3DPtr core = osg::Transform3DBase::create();
    core->setTranslation({x, 0, 0});
    return core;
}

TEST_F(DeepCloneTest, CoresAreCopies)
{
    const osg::RefPtr<NodePtr> root(named("a", movedBy(17)));
    osg::setName(root->getCore(), "core");
    const osg::RefPtr<NodePtr> clone(osg::deepCloneTree(root, ""));
    const auto* copied = static_cast<const osg::Transform3D*>(clone->getCore().get());
    EXPECT_FALSE(clone->getCore() == root->getCore());
    EXPECT_EQ(&copied->getType(), &osg::Transform3DBase::_type);
    EXPECT_EQ(copied->getTranslation(), (osg::Vec3f{17, 0, 0}));
    EXPECT_STREQ(osg::getName(clone->getCore()), "core");
    EXPECT_EQ(root->getCore()->getRefCount(), 1u);
    EXPECT_EQ(clone->getCore()->getRefCount(), 1u);
}

TEST_F(DeepCloneTest, CoresSharedWithinTheTreeStaySharedAmongTheCopies)
{
    const osg::RefPtr<NodePtr> root(named("a", movedBy(1)));
    const osg::Transform3DPtr shared = movedBy(2);
    root->addChild(named("b", shared));
    root->addChild(named("c"));
    root->getChild(1)->addChild(named("d", shared));
    const osg::RefPtr<NodePtr> clone(osg::deepCloneTree(root, ""));
    const osg::NodeCorePtr first = clone->getChild(0)->getCore();
    EXPECT_TRUE(first == clone->getChild(1)->getChild(0)->getCore());
    EXPECT_FALSE(first == osg::NodeCorePtr(shared));
    EXPECT_EQ(first->getRefCount(), 2u);
    EXPECT_EQ(shared->getRefCount(), 2u);
    EXPECT_FALSE(clone->getChild(1)->getCore());
}

TEST_F(DeepCloneTest, MaterialsStaySharedWithTheOriginal)
{
    const osg::SimpleMaterialPtr material = osg::SimpleMaterialBase::create();
    const osg::GeometryPtr geometry = osg::GeometryBase::create();
    geometry->setMaterial(material);
    const osg::RefPtr<NodePtr> root(named("a", geometry));
    const osg::RefPtr<NodePtr> clone(osg::deepCloneTree(root, ""));
    EXPECT_TRUE(static_cast<const osg::Geometry*>(clone->getCore().get())->getMaterial() == material);
    EXPECT_EQ(material->getRefCount(), 2u);
}

TEST_F(DeepCloneTest, TheTextIsAppendedToTheNamesOfNamedNodes)
{
    const osg::RefPtr<NodePtr> root(named("a", movedBy(1)));
    osg::setName(root->getCore(), "core");
    root->addChild(osg::Node::create());
    root->getChild(0)->addChild(named("c"));
    const osg::RefPtr<NodePtr> clone(osg::deepCloneTree(root, "_copy"));
    EXPECT_STREQ(osg::getName(clone.get()), "a_copy");
    EXPECT_EQ(osg::getName(clone->getChild(0)), nullptr);
    EXPECT_STREQ(osg::getName(clone->getChild(0)->getChild(0)), "c_copy");
    EXPECT_STREQ(osg::getName(clone->getCore()), "core");
    EXPECT_STREQ(osg::getName(root.get()), "a");
}

TEST_F(DeepCloneTest, AttachmentsAndActivityAreCopied)
{
    const osg::RefPtr<NodePtr> root(named("a"));
    root->setActive(false);
    osg::setTags(root.get(), {"x", "y"});
    const osg::RefPtr<NodePtr> clone(osg::deepCloneTree(root, ""));
    EXPECT_FALSE(clone->isActive());
    EXPECT_EQ(osg::tagsOf(clone.get()), (std::vector<std::string>{"x", "y"}));
}

TEST_F(DeepCloneTest, TheResultIsUncountedAndNullGivesNull)
{
    const osg::RefPtr<NodePtr> root(named("a"));
    const NodePtr clone = osg::deepCloneTree(root, "");
    EXPECT_EQ(clone->getRefCount(), 0u);
    EXPECT_FALSE(clone->getParent());
    discard(clone);
    EXPECT_FALSE(osg::deepCloneTree(NodePtr(), "x"));
}

TEST_F(DeepCloneTest, EditsAreBracketed)
{
    const osg::RefPtr<NodePtr> root(named("a", movedBy(3)));
    const osg::EditAudit audit;
    const osg::RefPtr<NodePtr> clone(osg::deepCloneTree(root, "_2"));
    EXPECT_TRUE(audit.unbracketed().empty());
    EXPECT_EQ(audit.brackets().size(), 2u);
}

} // namespace
