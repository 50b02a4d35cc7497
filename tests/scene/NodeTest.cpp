#include "host/OSGSystem/Node.h"

#include "host/OSGSystem/FieldContainerFactory.h"
#include "host/OSGSystem/Group.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/Transform.h"
#include "tests/scene/SceneGraphTest.h"

namespace
{

using NodeTest = SceneGraphTest;
using osg::Node;
using osg::NodePtr;

std::string childNames(const NodePtr& node)
{
    std::string result;
    for (unsigned i = 0; i < node->getNChildren(); ++i)
        result += osg::getName(node->getChild(i));
    return result;
}

NodePtr named(const char* name)
{
    const NodePtr node = Node::create();
    osg::setName(node, name);
    return node;
}

/// A held node with children of one-letter names.
struct Family {
    explicit Family(const std::string& letters)
    {
        for (const char letter : letters)
            root->addChild(named(std::string(1, letter).c_str()));
    }
    NodePtr child(unsigned index) const { return root.get()->getChild(index); }

    osg::RefPtr<NodePtr> root{Node::create()};
};

TEST_F(NodeTest, ANewNodeIsEmptyAndUncounted)
{
    const NodePtr node = Node::create();
    EXPECT_EQ(node->getRefCount(), 0u);
    EXPECT_EQ(node->getNChildren(), 0u);
    EXPECT_TRUE(node->getCore() == osg::NullFC);
    EXPECT_TRUE(node->getParent() == osg::NullFC);
    EXPECT_TRUE(node->getChild(0) == osg::NullFC);
    EXPECT_TRUE(node->isActive());
    discard(node);
}

TEST_F(NodeTest, AddChildAppendsAndSetsTheParent)
{
    Family family("abc");
    EXPECT_EQ(childNames(family.root), "abc");
    EXPECT_TRUE(family.child(1)->getParent() == family.root.get());
    EXPECT_EQ(family.child(1)->getRefCount(), 1u);
}

TEST_F(NodeTest, AddChildOfANodeThatHasAParentMovesIt)
{
    Family from("abc");
    Family to("x");
    while (from.root->getNChildren() > 0)
        to.root->addChild(from.child(0));
    EXPECT_EQ(from.root->getNChildren(), 0u);
    EXPECT_EQ(childNames(to.root), "xabc");
    EXPECT_EQ(to.child(1)->getRefCount(), 1u);
}

TEST_F(NodeTest, AddChildOfAnOwnChildMovesItToTheEnd)
{
    Family family("abc");
    family.root->addChild(family.child(0));
    EXPECT_EQ(childNames(family.root), "bca");
}

TEST_F(NodeTest, InsertChildPutsTheChildAtTheIndex)
{
    Family family("abc");
    family.root->insertChild(1, named("x"));
    EXPECT_EQ(childNames(family.root), "axbc");
    family.root->insertChild(0, named("y"));
    EXPECT_EQ(childNames(family.root), "yaxbc");
    family.root->insertChild(99, named("z"));
    EXPECT_EQ(childNames(family.root), "yaxbcz");
}

TEST_F(NodeTest, InsertChildTakesTheChildFromItsFormerParent)
{
    Family from("ab");
    Family to("xyz");
    to.root->insertChild(1, from.child(1));
    EXPECT_EQ(childNames(from.root), "a");
    EXPECT_EQ(childNames(to.root), "xbyz");
}

TEST_F(NodeTest, LastChildFirstToOneIndexKeepsTheOrder)
{
    Family parent("aRz");
    const NodePtr reference = parent.child(1);
    for (const char* name : {"K", "L", "M"})
        reference->addChild(named(name));
    const int index = parent.root->findChild(reference);
    while (reference->getNChildren() > 0)
        parent.root->insertChild(static_cast<unsigned>(index), reference->getChild(reference->getNChildren() - 1));
    parent.root->subChild(reference);
    EXPECT_EQ(childNames(parent.root), "aKLMz");
}

TEST_F(NodeTest, SubChildTakesTheChildOutAndGivesItUp)
{
    Family family("abc");
    const osg::RefPtr<NodePtr> kept(family.child(1));
    family.root->subChild(kept);
    EXPECT_EQ(childNames(family.root), "ac");
    EXPECT_TRUE(kept->getParent() == osg::NullFC);
    EXPECT_EQ(kept->getRefCount(), 1u);
}

TEST_F(NodeTest, SubChildOfAStrangerDoesNothing)
{
    Family family("ab");
    Family other("c");
    family.root->subChild(other.child(0));
    family.root->subChild(NodePtr());
    EXPECT_EQ(childNames(family.root), "ab");
    EXPECT_EQ(childNames(other.root), "c");
}

TEST_F(NodeTest, FindChildTellsTheIndexOrANegativeNumber)
{
    Family family("abcdef");
    Family other("x");
    for (const unsigned index : {4u, 0u, 5u, 2u, 3u, 1u})
        EXPECT_EQ(family.root->findChild(family.child(index)), static_cast<int>(index));
    EXPECT_LT(family.root->findChild(other.child(0)), 0);
    EXPECT_LT(family.root->findChild(NodePtr()), 0);
}

TEST_F(NodeTest, ANodeTakesNeitherItselfNorItsAncestors)
{
    Family family("a");
    const NodePtr child = family.child(0);
    child->addChild(named("b"));
    child->addChild(family.root);
    child->getChild(0)->addChild(family.root);
    child->addChild(child);
    EXPECT_TRUE(family.root->getParent() == osg::NullFC);
    EXPECT_EQ(childNames(child), "b");
}

TEST_F(NodeTest, RandomMovesAgreeWithAPlainVector)
{
    std::vector<std::string> expected;
    Family family("");
    unsigned random = 12345;
    for (int step = 0; step < 2000; ++step) {
        random = random * 1664525u + 1013904223u;
        const unsigned pick = random >> 8;
        if (expected.empty() || pick % 3 != 0) {
            const unsigned index = pick / 3 % (static_cast<unsigned>(expected.size()) + 1);
            expected.insert(expected.begin() + index, std::to_string(step) + " ");
            family.root->insertChild(index, named(expected[index].c_str()));
        } else {
            const unsigned index = pick / 3 % static_cast<unsigned>(expected.size());
            ASSERT_EQ(family.root->findChild(family.child(index)), static_cast<int>(index));
            expected.erase(expected.begin() + index);
            family.root->subChild(family.child(index));
        }
    }
    std::string joined;
    for (const std::string& name : expected)
        joined += name;
    EXPECT_EQ(childNames(family.root), joined);
}

TEST_F(NodeTest, CoresAreSharedAndCounted)
{
    const osg::GroupPtr core = osg::Group::create();
    const osg::RefPtr<NodePtr> first(Node::create());
    const osg::RefPtr<NodePtr> second(Node::create());
    first->setCore(core);
    second->setCore(core);
    EXPECT_EQ(core->getRefCount(), 2u);
    first->setCore(core);
    EXPECT_EQ(core->getRefCount(), 2u);
    first->setCore(osg::NullFC);
    EXPECT_EQ(core->getRefCount(), 1u);
    EXPECT_TRUE(second->getCore() == core);
}

TEST_F(NodeTest, TheLastReferenceDestroysTheTreeBelow)
{
    {
        Family family("abc");
        family.child(0)->setCore(osg::Group::create());
        EXPECT_EQ(osg::livingContainerCount(), 8u); // four nodes, three names, one core
    }
    EXPECT_EQ(osg::livingContainerCount(), 0u);
}

TEST_F(NodeTest, AChildThatIsHeldElsewhereOutlivesItsParent)
{
    osg::RefPtr<NodePtr> kept;
    {
        Family family("ab");
        kept = family.child(1);
    }
    EXPECT_TRUE(kept->getParent() == osg::NullFC);
    EXPECT_EQ(kept->getRefCount(), 1u);
}

TEST_F(NodeTest, AChainOfAMillionNodesDiesWithoutDeepRecursion)
{
    NodePtr top = Node::create();
    for (int i = 0; i < 1'000'000; ++i) {
        const NodePtr parent = Node::create();
        parent->addChild(top);
        top = parent;
    }
    EXPECT_EQ(osg::livingContainerCount(), 1'000'001u);
    discard(top);
    EXPECT_EQ(osg::livingContainerCount(), 0u);
}

} // namespace
