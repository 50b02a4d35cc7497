#include "importer/TreeFold.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Group.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/Transform3D.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "importer/SceneText.h"
#include "scene/Bounds.h"
#include "scene/EditAudit.h"
#include "scene/MatrixMath.h"
#include "scene/NodeWalk.h"
#include "scene/OccurrenceIds.h"
#include "scene/SceneEdits.h"
#include "standalone/startup/StandaloneSession.h"
#include "standalone/znVariants/SessionVariants.h"
#include "tests/support/BookmarkScene.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>

namespace
{

class TreeFoldTest : public testing::Test
{
protected:
    static osg::NodePtr add(const osg::NodePtr& parent, const char* name)
    {
        const osg::NodePtr node = osg::makeNodeFor(osg::Group::create());
        osg::addChild(parent, node);
        osg::setName(node, name);
        return node;
    }

    std::size_t fold() { return importer::foldTree(session, root.get()); }
    std::string tree() const { return zn::describeScene(root.get()); }

    zn::StandaloneSession session;
    osg::RefPtr<osg::NodePtr> root{osg::makeNodeFor(osg::Group::create())};
};

/// A tree of groups, some without names, some with that of their parents, with boxes as leaves.
osg::RefPtr<osg::NodePtr> randomTree(unsigned seed)
{
    std::mt19937 random(seed);
    osg::RefPtr<osg::NodePtr> root(osg::makeNodeFor(osg::Group::create()));
    std::vector<osg::NodePtr> groups = {root.get()};
    for (int i = 0; i < 200; ++i) {
        const osg::NodePtr parent = groups[random() % groups.size()];
        const osg::NodePtr node = osg::makeNodeFor(osg::Transform3DBase::create());
        const char* above = osg::getName(parent);
        const char* names[] = {"", "", "a", "b", above ? above : "c"};
        osg::setName(node, names[random() % 5]);
        if (random() % 4 == 0)
            osg::fcCast<osg::Transform>(node->getCore())->setMatrix(osg::translationMatrix({1.F * i, 2, 3}));
        osg::addChild(parent, node);
        groups.push_back(node);
        const float size = 1.F + static_cast<float>(random() % 9);
        if (random() % 3 == 0)
            osg::addChild(node, bookmarkscene::part(i % 2 ? "a" : "", bookmarkscene::box({0, 0, 0}, {size, 1, 1}), {}));
    }
    return root;
}

/// The ids of all nodes that have one.
std::map<const osg::Node*, std::string> idsOf(const osg::NodePtr& root)
{
    const osg::OccurrenceIds ids(root);
    std::map<const osg::Node*, std::string> found;
    for (const osg::NodePtr& node : osg::parentsFirst(root))
        if (!ids.step(node).empty())
            found[node.get()] = ids.of(node);
    return found;
}

TEST_F(TreeFoldTest, WhatIsBelowAWrapperTakesItsPlace)
{
    add(root.get(), "first");
    const osg::NodePtr outer = add(root.get(), "");
    add(outer, "a");
    const osg::NodePtr inner = add(outer, "");
    add(inner, "b");
    add(inner, "c");
    add(outer, "d");
    add(root.get(), "last");
    const osg::EditAudit audit;
    EXPECT_EQ(fold(), 2u);
    EXPECT_TRUE(audit.unbracketed().empty());
    EXPECT_TRUE(audit.idleBrackets().empty());
    EXPECT_EQ(tree(),
              "- [Group]\n  first [Group]\n  a [Group]\n  b [Group]\n  c [Group]\n  d [Group]\n  last [Group]\n");
    for (unsigned i = 0; i < root->getNChildren(); ++i)
        EXPECT_TRUE(root->getChild(i)->getParent() == root.get());
    EXPECT_EQ(fold(), 0u);
}

TEST_F(TreeFoldTest, IdsAndBoundsAreTheSameAfterwards)
{
    for (unsigned seed = 0; seed < 60; ++seed) {
        const osg::RefPtr<osg::NodePtr> tree = randomTree(seed);
        const auto ids = idsOf(tree.get());
        const osg::Box box = osg::worldBounds(tree.get());
        const std::size_t nodes = osg::parentsFirst(tree.get()).size();
        const std::size_t gone = importer::foldTree(session, tree.get());
        EXPECT_GT(gone, 5u);
        EXPECT_EQ(osg::parentsFirst(tree.get()).size(), nodes - gone);
        EXPECT_EQ(ids.size(), nodes - gone - 1) << "all but the root have an id";
        EXPECT_EQ(idsOf(tree.get()), ids) << seed;
        const osg::Box after = osg::worldBounds(tree.get());
        for (int axis = 0; axis < 3; ++axis) {
            EXPECT_EQ(after.low[axis], box.low[axis]);
            EXPECT_EQ(after.high[axis], box.high[axis]);
        }
        EXPECT_EQ(importer::foldTree(session, tree.get()), 0u) << "a fold leaves nothing to fold";
    }
}

TEST_F(TreeFoldTest, WhatTheSessionOrSomebodyElseKnowsStays)
{
    const osg::NodePtr held = add(root.get(), "");
    const osg::NodePtr selected = add(root.get(), "");
    const osg::NodePtr varied = add(root.get(), "");
    const osg::NodePtr other = add(root.get(), "");
    for (const osg::NodePtr& node : {held, selected, varied, other})
        add(node, "content");
    const auto ids = idsOf(root.get());
    const osg::RefPtr<osg::NodePtr> reference(held);
    session.select(selected);
    zn::variants::sessionVariants(session).nodeVariant(varied);
    EXPECT_EQ(fold(), 1u);
    EXPECT_TRUE(root->getChild(0) == held);
    EXPECT_TRUE(session.selectedNode() == selected);
    EXPECT_TRUE(zn::variants::sessionVariants(session).nodeVariants().front()->getNode() == varied);
    EXPECT_STREQ(osg::getName(root->getChild(3)), "content");
    EXPECT_EQ(idsOf(root.get()), ids);
}

TEST_F(TreeFoldTest, SavedViewsStayWithTheirCameras)
{
    const osg::RefPtr<osg::NodePtr> car(bookmarkscene::make());
    const std::string before = zn::describeScene(car.get());
    EXPECT_EQ(importer::foldTree(session, car.get()), 0u);
    EXPECT_EQ(zn::describeScene(car.get()), before);
}

/// Far more than a walk to the top for each of them could take.
TEST_F(TreeFoldTest, ADeepTreeIsNoMatter)
{
    osg::NodePtr lowest = root.get();
    for (int i = 0; i < 200000; ++i) {
        lowest = add(lowest, i % 2 ? "" : "named");
        add(lowest, "leaf");
    }
    EXPECT_EQ(fold(), 100000u);
}

} // namespace
