#include "host/OSGSystem/TreeFunctions.h"

#include "host/OSGSystem/Geometry.h"
#include "host/OSGSystem/Group.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/SimpleMaterial.h"
#include "scene/Mesh.h"
#include "tests/scene/SceneGraphTest.h"

namespace
{

using TreeFunctionsTest = SceneGraphTest;
using osg::Action;
using osg::NodePtr;

NodePtr named(const char* name)
{
    const NodePtr node = osg::Node::create();
    osg::setName(node, name);
    return node;
}

/// a(b(c, d), e)
osg::RefPtr<NodePtr> sampleTree()
{
    const osg::RefPtr<NodePtr> root(named("a"));
    root->addChild(named("b"));
    root->getChild(0)->addChild(named("c"));
    root->getChild(0)->addChild(named("d"));
    root->addChild(named("e"));
    return root;
}

std::string visited(const NodePtr& root, const std::function<Action::ResultE(const std::string&)>& steer)
{
    std::string names;
    osg::traverse(root, [&](const NodePtr& node) {
        names += osg::getName(node);
        return steer(osg::getName(node));
    });
    return names;
}

TEST_F(TreeFunctionsTest, TraverseVisitsDepthFirstFromTheNodeItself)
{
    const auto root = sampleTree();
    EXPECT_EQ(visited(root, [](const std::string&) { return Action::Continue; }), "abcde");
}

TEST_F(TreeFunctionsTest, TheResultOneSkipsWhatHangsBelow)
{
    const auto root = sampleTree();
    EXPECT_EQ(visited(root, [](const std::string& name) { return static_cast<Action::ResultE>(name == "b" ? 1 : 0); }),
              "abe");
}

TEST_F(TreeFunctionsTest, QuitEndsTheWalk)
{
    const auto root = sampleTree();
    EXPECT_EQ(visited(root, [](const std::string& name) { return name == "c" ? Action::Quit : Action::Continue; }),
              "abc");
}

TEST_F(TreeFunctionsTest, TraverseShowsANullNodeToTheVisitor)
{
    int calls = 0;
    const Action::ResultE result = osg::traverse(NodePtr(), [&](const NodePtr& node) {
        ++calls;
        return node ? Action::Continue : Action::Skip;
    });
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(result, Action::Skip);
}

TEST_F(TreeFunctionsTest, AVisitorMayExchangeCores)
{
    const auto root = sampleTree();
    osg::traverse(root, [](const NodePtr& node) {
        node->setCore(osg::Group::create());
        return Action::Continue;
    });
    EXPECT_TRUE(root->getChild(0)->getChild(1)->getCore());
}

TEST_F(TreeFunctionsTest, ACloneHasNewNodesAndTheSameCores)
{
    const auto root = sampleTree();
    const osg::GroupPtr core = osg::Group::create();
    root->getChild(0)->setCore(core);
    root->getChild(1)->setActive(false);
    const osg::RefPtr<NodePtr> clone(osg::cloneTree(root, true));
    EXPECT_EQ(visited(clone, [](const std::string&) { return Action::Continue; }), "abcde");
    EXPECT_FALSE(clone.get() == root.get());
    EXPECT_FALSE(clone->getChild(0) == root->getChild(0));
    EXPECT_TRUE(clone->getChild(0)->getCore() == core);
    EXPECT_EQ(core->getRefCount(), 2u);
    EXPECT_FALSE(clone->getChild(1)->isActive());
    EXPECT_TRUE(clone->getChild(0)->getParent() == clone.get());
    EXPECT_EQ(clone->getChild(0)->getRefCount(), 1u);
}

TEST_F(TreeFunctionsTest, NamesOfACloneAreItsOwn)
{
    const auto root = sampleTree();
    const osg::RefPtr<NodePtr> clone(osg::cloneTree(root, true));
    osg::setName(clone->getChild(0), "renamed");
    EXPECT_STREQ(osg::getName(root->getChild(0)), "b");
}

TEST_F(TreeFunctionsTest, ACloneWithoutAttachmentsHasNoNames)
{
    const auto root = sampleTree();
    const osg::RefPtr<NodePtr> clone(osg::cloneTree(root, false));
    EXPECT_EQ(osg::getName(clone.get()), nullptr);
    EXPECT_EQ(clone->getChild(0)->getNChildren(), 2u);
}

TEST_F(TreeFunctionsTest, AFreshCloneIsUncountedAndWithoutParent)
{
    const auto root = sampleTree();
    const NodePtr clone = osg::cloneTree(root->getChild(0), true);
    EXPECT_EQ(clone->getRefCount(), 0u);
    EXPECT_FALSE(clone->getParent());
    discard(clone);
    EXPECT_FALSE(osg::cloneTree(NodePtr(), true));
}

TEST_F(TreeFunctionsTest, MakeNodeForHoldsTheCore)
{
    const osg::GroupPtr core = osg::Group::create();
    const osg::RefPtr<NodePtr> node(osg::makeNodeFor(core));
    EXPECT_TRUE(node->getCore() == core);
    EXPECT_EQ(core->getRefCount(), 1u);
}

TEST_F(TreeFunctionsTest, WalksAndClonesOfADeepChainDoNotRecurse)
{
    NodePtr top = osg::Node::create();
    for (int i = 0; i < 300'000; ++i) {
        const NodePtr parent = osg::Node::create();
        parent->addChild(top);
        top = parent;
    }
    const osg::RefPtr<NodePtr> root(top);
    const osg::RefPtr<NodePtr> clone(osg::cloneTree(root, true));
    std::size_t count = 0;
    osg::traverse(clone, [&](const NodePtr&) {
        ++count;
        return Action::Continue;
    });
    EXPECT_EQ(count, 300'001u);
}

TEST_F(TreeFunctionsTest, MeshesAreSharedByGeometriesThatAreSet)
{
    osg::Mesh mesh;
    mesh.positions = std::vector<osg::Vec3f>{{1, 2, 3}, {4, 5, 6}, {7, 8, 10}};
    mesh.triangles = std::vector<std::uint32_t>{0, 1, 2};
    const auto shared = std::make_shared<const osg::Mesh>(std::move(mesh));
    const osg::RefPtr<osg::GeometryPtr> first(osg::GeometryBase::create());
    const osg::RefPtr<osg::GeometryPtr> second(osg::GeometryBase::create());
    EXPECT_TRUE(osg::GeometryAccess::mesh(*first.get()).positions.empty());
    osg::GeometryAccess::setMesh(*first.get(), shared);
    EXPECT_FALSE(osg::FieldContainer::isEqual(first.get(), second.get()));
    osg::GeometryAccess::setMesh(*second.get(), shared);
    EXPECT_TRUE(osg::FieldContainer::isEqual(first.get(), second.get()));
    EXPECT_EQ(osg::GeometryAccess::mesh(*second.get()).positions[2], (osg::Vec3f{7, 8, 10}));
}

} // namespace
