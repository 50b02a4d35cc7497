#include "host/znOpenSGExt/ExtReference.h"
#include "host/znOpenSGUtils/znOptimize.h"
#include "scene/Tags.h"
#include "tests/standalone/znOpenSGUtils/TreeTest.h"

namespace
{

using testing::ElementsAre;

class GroupCleaningTest : public TreeTest
{
};

TEST_F(GroupCleaningTest, AGroupThatSaysNothingGivesItsPlaceToItsChildren)
{
    addGroup(root, "first");
    const osg::NodePtr plain = add(root, osg::Group::create());
    addGroup(plain, "a");
    const osg::NodePtr inner = add(plain, osg::Group::create());
    addGroup(inner, "b");
    addGroup(inner, "c");
    addGroup(plain, "d");
    addGroup(root, "last");
    znOptimize::cleanupGroupNodes(root);
    EXPECT_THAT(childNames(root), ElementsAre("first", "a", "b", "c", "d", "last"));
}

TEST_F(GroupCleaningTest, WhatHasANameATagATransformOrIsHiddenStays)
{
    addGroup(root, "named");
    const osg::NodePtr tagged = add(root, osg::Group::create());
    osg::setTags(tagged, {"layer"});
    const osg::NodePtr namedCore = add(root, osg::Group::create());
    osg::setName(namedCore->getCore(), "core");
    add(root, transform(placed({1, 1, 1}, {7, 0, 0})));
    add(root, osg::Group::create())->setActive(false);
    add(root, osg::ExtReferenceBase::create());
    znOptimize::cleanupGroupNodes(root);
    EXPECT_EQ(root->getNChildren(), 6u);
}

TEST_F(GroupCleaningTest, TheRootItselfStaysAndNullIsLeftAlone)
{
    const osg::NodePtr plain = add(root, osg::Group::create());
    addGroup(plain, "a");
    znOptimize::cleanupGroupNodes(plain);
    znOptimize::cleanupGroupNodes({});
    znOptimize::removeEmptyGroups({}, false);
    EXPECT_EQ(root->getNChildren(), 1u);
    EXPECT_THAT(childNames(plain), ElementsAre("a"));
}

TEST_F(GroupCleaningTest, EmptyBranchesGoAsAWhole)
{
    const osg::NodePtr branch = addGroup(root, "branch");
    add(branch, transform(placed({1, 1, 1}, {7, 0, 0})), "moved");
    add(addGroup(root, "used"), geometry(), "part");
    add(root, osg::ExtReferenceBase::create(), "reference");
    const osg::NodePtr tagged = addGroup(root, "tagged");
    osg::setTags(tagged, {"layer"});
    addGroup(root, "hidden")->setActive(false);
    znOptimize::removeEmptyGroups(root, false);
    EXPECT_THAT(childNames(root), ElementsAre("used", "reference", "tagged", "hidden"));
}

TEST_F(GroupCleaningTest, NamedGroupsStayOnRequest)
{
    add(addGroup(root, "named"), osg::Group::create());
    add(root, osg::Group::create());
    znOptimize::removeEmptyGroups(root, true);
    ASSERT_THAT(childNames(root), ElementsAre("named"));
    EXPECT_EQ(root->getChild(0)->getNChildren(), 0u);
}

TEST_F(GroupCleaningTest, ADeepChainIsNoDanger)
{
    osg::NodePtr deepest = root;
    for (int i = 0; i < 100000; ++i)
        deepest = add(deepest, osg::Group::create());
    addGroup(deepest, "end");
    znOptimize::cleanupGroupNodes(root);
    EXPECT_THAT(childNames(root), ElementsAre("end"));
}

} // namespace
