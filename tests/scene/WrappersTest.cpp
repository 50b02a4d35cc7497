#include "scene/Wrappers.h"

#include "host/OSGSystem/Group.h"
#include "host/OSGSystem/MaterialGroup.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/Transform3D.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "host/znOpenSGExt/ExtReference.h"
#include "scene/Attributes.h"
#include "scene/EditScope.h"
#include "scene/NodeProperties.h"
#include "scene/SceneEdits.h"
#include "scene/Tags.h"
#include "tests/scene/SceneGraphTest.h"

namespace
{

using osg::NodePtr;

class WrappersTest : public SceneGraphTest
{
protected:
    void TearDown() override
    {
        root = NodePtr();
        SceneGraphTest::TearDown();
    }

    static NodePtr add(const NodePtr& parent, const char* name, const osg::NodeCorePtr& core = osg::Group::create())
    {
        const NodePtr node = osg::makeNodeFor(core);
        osg::addChild(parent, node);
        osg::setName(node, name);
        return node;
    }

    static NodePtr addPlace(const NodePtr& parent, const char* name)
    {
        const osg::Transform3DPtr place = osg::Transform3DBase::create();
        place->setTranslation({1, 2, 3});
        return add(parent, name, place);
    }

    std::vector<NodePtr> wrappers() const { return osg::Wrappers(root.get()).nodes(); }

    osg::RefPtr<NodePtr> root{osg::Node::create()};
};

using List = std::vector<NodePtr>;

TEST_F(WrappersTest, NamelessGroupsAndTransformsThatMoveNothing)
{
    const NodePtr group = add(root.get(), "");
    const NodePtr transform = add(group, "", osg::Transform3DBase::create());
    const NodePtr none = add(transform, "", {});
    add(none, "a");
    add(none, "b");
    EXPECT_EQ(wrappers(), (List{group, transform, none}));
    const osg::Wrappers known(root.get());
    EXPECT_TRUE(known.contains(transform));
    EXPECT_FALSE(known.contains(none->getChild(0)));
    EXPECT_FALSE(known.contains(root.get()));
    EXPECT_FALSE(known.contains({}));
}

TEST_F(WrappersTest, WhatSaysSomethingStays)
{
    const auto wrap = [this](const osg::NodeCorePtr& core = osg::Group::create()) {
        const NodePtr node = add(root.get(), "", core);
        add(node, "content");
        return node;
    };
    addPlace(addPlace(root.get(), ""), "content");
    wrap(osg::ExtReferenceBase::create());
    wrap(osg::MaterialGroupBase::create());
    const NodePtr hidden = wrap();
    osg::edit(hidden, osg::Node::ActiveFieldMask, [&] { hidden->setActive(false); });
    osg::setTags(wrap(), {"tag"});
    osg::addAttributes(wrap(), osg::AttributeOwner::Occurrence, {{"Position", std::string("1")}});
    osg::setLocked(wrap(), true);
    osg::setTags(wrap()->getCore(), {"tag of the core"});
    EXPECT_EQ(wrappers(), List{});
}

TEST_F(WrappersTest, WhatIsEmptyStays)
{
    add(root.get(), "");
    EXPECT_EQ(wrappers(), List{});
}

TEST_F(WrappersTest, OfTwoNodesWithOneNameTheOneThatSaysNothing)
{
    const NodePtr outer = add(root.get(), "rod");
    const NodePtr placed = addPlace(outer, "rod");
    const NodePtr inner = add(placed, "rod");
    add(inner, "a");
    add(inner, "b");
    EXPECT_EQ(wrappers(), (List{outer, inner}));
}

TEST_F(WrappersTest, TheOuterOneWhereNeitherSaysAnything)
{
    const NodePtr outer = add(root.get(), "rod");
    const NodePtr inner = add(outer, "rod");
    add(inner, "a");
    add(inner, "b");
    EXPECT_EQ(wrappers(), List{outer});
}

TEST_F(WrappersTest, ANameBesideOthersOrAnotherNameStays)
{
    const NodePtr both = add(root.get(), "rod");
    addPlace(both, "rod");
    add(both, "ring");
    const NodePtr other = addPlace(root.get(), "rod");
    add(add(other, "Rod"), "content");
    EXPECT_EQ(wrappers(), List{});
}

TEST_F(WrappersTest, NamesMeetOverWhatIsGone)
{
    const NodePtr place = addPlace(root.get(), "rod");
    const NodePtr nameless = add(place, "");
    const NodePtr inner = add(nameless, "rod");
    add(add(inner, ""), "a");
    add(inner, "b");
    EXPECT_EQ(wrappers(), (List{nameless, inner, inner->getChild(0)}));
    add(nameless, "beside it");
    EXPECT_EQ(wrappers(), (List{nameless, inner->getChild(0)}));
}

TEST_F(WrappersTest, TheRootIsNone)
{
    add(root.get(), "content");
    EXPECT_EQ(wrappers(), List{});
}

} // namespace
