#include "importer/NumberedNames.h"

#include "host/OSGSystem/Group.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "scene/SceneEdits.h"
#include "standalone/startup/StandaloneSession.h"

#include <gtest/gtest.h>

#include <string>

namespace
{

class NumberedNamesTest : public testing::Test
{
protected:
    static osg::NodePtr add(const osg::NodePtr& parent, const std::string& name)
    {
        const osg::NodePtr node = osg::makeNodeFor(osg::Group::create());
        osg::addChild(parent, node);
        osg::setName(node, name.c_str());
        return node;
    }
    std::size_t count() { return importer::numberedNodes(root.get()).size(); }

    zn::StandaloneSession session;
    osg::RefPtr<osg::NodePtr> root{osg::makeNodeFor(osg::Group::create())};
};

TEST_F(NumberedNamesTest, NumbersThatRiseDownTheTreeAreTheWritersOwn)
{
    osg::setName(root.get(), "board");
    const osg::NodePtr top = add(root.get(), "o0"), left = add(top, "o1"), right = add(top, "o12");
    const osg::NodePtr nameless = add(left, ""), leaf = add(left, "o2");
    const auto found = importer::numberedNodes(root.get());
    EXPECT_EQ(found.size(), 4u);
    EXPECT_TRUE(found.contains(leaf.get()) && found.contains(right.get()));
    EXPECT_FALSE(found.contains(nameless.get()) || found.contains(root.get().get()));
}

TEST_F(NumberedNamesTest, PartsThatAreCountedStandSideBySide)
{
    for (int i = 0; i < 50; ++i)
        add(root.get(), "bolt" + std::to_string(i));
    EXPECT_EQ(count(), 0u);
    add(add(root.get(), "bolt50"), "bolt51");
    EXPECT_EQ(count(), 0u);
}

TEST_F(NumberedNamesTest, ANumberThatDoesNotRiseIsAName)
{
    add(add(add(root.get(), "R1"), "R2"), "R4");
    EXPECT_EQ(count(), 3u);
    add(root->getChild(0), "R1");
    EXPECT_EQ(count(), 0u);
}

TEST_F(NumberedNamesTest, OneNameInTenMayBeAnother)
{
    osg::NodePtr node = root.get();
    for (int i = 0; i < 9; ++i)
        node = add(node, "node_" + std::to_string(i));
    add(node, "motor");
    EXPECT_EQ(count(), 9u);
    add(node, "x1");
    EXPECT_EQ(count(), 0u);
}

TEST_F(NumberedNamesTest, OnlyTheCommonestLettersAreTheWritersOwn)
{
    osg::NodePtr node = root.get();
    for (int i = 0; i < 18; ++i)
        node = add(node, "node_" + std::to_string(i));
    const osg::NodePtr bolt = add(node, "bolt30");
    EXPECT_EQ(count(), 18u);
    EXPECT_FALSE(importer::numberedNodes(root.get()).contains(bolt.get()));
}

TEST_F(NumberedNamesTest, ANumberAloneAndOneBeyondCountingAreNames)
{
    add(add(add(root.get(), "1"), "2"), "3");
    EXPECT_EQ(count(), 0u);
    const osg::NodePtr top = add(root->getChild(0), "o1");
    add(top, "o99999999999999999999999");
    EXPECT_EQ(count(), 0u);
}

TEST_F(NumberedNamesTest, ATreeWithoutNamesHasNone)
{
    add(root.get(), "");
    EXPECT_EQ(count(), 0u);
}

} // namespace
