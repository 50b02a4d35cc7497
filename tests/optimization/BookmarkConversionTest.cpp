#include "optimization/BookmarkConversion.h"

#include "host/OSGSystem/Edit.h"
#include "tests/optimization/BookmarkTest.h"

#include <stdexcept>

using namespace optimization;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

using BookmarkConversion = BookmarkTest;
using InitVisibility = BookmarkTest;

TEST_F(BookmarkConversion, ABookmarkBecomesASetInItsGroupAndLeavesTheTree)
{
    pooled("Roof Glass");
    addGroup(root, "body");
    addBookmark("Open Roof", {"bookmark_group[Exterior]", "switch_shader[Roof Glass]:Tinted"});
    addGroup(root, "wheels");
    convertStylarBookmarks(root, false);
    const znVariantSet* set = znVariants::findVariantSet(QStringLiteral("Open Roof"));
    ASSERT_TRUE(set);
    ASSERT_TRUE(set->getGroup());
    EXPECT_EQ(set->getGroup()->getName(), QStringLiteral("Exterior"));
    EXPECT_EQ(stateOf("Open Roof", "Roof Glass"), "Tinted");
    EXPECT_THAT(childNames(root), ElementsAre("body", "wheels"));
}

TEST_F(BookmarkConversion, TheHostIsAskedInThisOrder)
{
    const std::string paint = zn::tracetext::of(pooled("Paint"));
    const std::string node =
        zn::tracetext::of(addBookmark("Red", {"bookmark_group[Colours]", "switch_shader[Paint]:R"}));
    const std::string top = zn::tracetext::of(root);
    EXPECT_THAT(
        callsOf([this] { convertStylarBookmarks(root, false); }),
        ElementsAre("znNodeUtils::hasTag(" + node + ", 'stylar::bookmark')", "znNodeUtils::getTags(" + node + ")",
                    "znVariants::findVariantGroup('Colours')", "znVariants::createVariantGroup('Colours', true, true)",
                    "znNodeUtils::getName(" + node + ")", "znVariants::findVariantSet('Red')",
                    "znVariants::createVariantSet('Red', true, 'Colours')", "znMaterials::initFindCache()",
                    "znNodeUtils::getTags(" + node + ")", "znMaterials::findMaterial('Paint')",
                    "znVariants::findMaterialVariant('Paint')", "znVariants::createMaterialVariant('Paint', true)",
                    "znVariantSet::add('Red', 'Paint', '')", "znVariantSet::findMaterialVariant('Red', 'Paint')",
                    "znNodeUtils::getNodesWithTag(" + top + ", 'stylar::bookmark_visibilities')"));
}

TEST_F(BookmarkConversion, ATreeWithoutBookmarksStaysAsItIs)
{
    addTagged(root, "part", {"bookmark_group[x]", "bookmark[y]:visible"});
    const osg::EditAudit audit;
    convertStylarBookmarks(root, false);
    EXPECT_THAT(childNames(root), ElementsAre("part"));
    EXPECT_THAT(audit.brackets(), IsEmpty());
    EXPECT_TRUE(variants().groups().empty());
    EXPECT_TRUE(variants().sets().empty());
}

TEST_F(BookmarkConversion, ABookmarkDeepInTheTreeIsAnOrdinaryNode)
{
    const osg::NodePtr part = addGroup(root, "part");
    addTagged(part, "Open Roof", {"stylar::bookmark"});
    convertStylarBookmarks(root, false);
    EXPECT_THAT(childNames(part), ElementsAre("Open Roof"));
    EXPECT_TRUE(variants().sets().empty());
}

TEST_F(BookmarkConversion, TheRootOpensOnceForAllItsBookmarks)
{
    addBookmark("a");
    addBookmark("b");
    const osg::EditAudit audit;
    convertStylarBookmarks(root, false);
    EXPECT_THAT(audit.brackets(),
                ElementsAre(osg::EditAudit::Record{root->getContainerId(), "Node", osg::AllFieldsMask}));
    EXPECT_THAT(audit.unbracketed(), IsEmpty());
}

TEST_F(BookmarkConversion, OfSeveralGroupsAllAreMadeAndTheLastCounts)
{
    addBookmark("Red", {"bookmark_group[A]", "bookmark_group[B]", "bookmark_group[A]"});
    convertStylarBookmarks(root, false);
    ASSERT_EQ(variants().groups().size(), 2U);
    EXPECT_EQ(variants().groups()[1]->getName(), QStringLiteral("B"));
    EXPECT_EQ(variants().sets()[0]->getGroup()->getName(), QStringLiteral("A"));
}

TEST_F(BookmarkConversion, AGroupTagWithoutABracketNamesItsRest)
{
    addBookmark("Red", {"bookmark_group[Open"});
    convertStylarBookmarks(root, false);
    EXPECT_TRUE(znVariants::findVariantGroup(QStringLiteral("Open")));
}

TEST_F(BookmarkConversion, ABookmarkWithoutAGroupGivesASetWithoutOne)
{
    addBookmark("Red");
    convertStylarBookmarks(root, false);
    EXPECT_EQ(znVariants::findVariantSet(QStringLiteral("Red"))->getGroup(), nullptr);
}

TEST_F(BookmarkConversion, ASecondBookmarkOfTheNameAddsToTheSetAndItsGroupIsNotApplied)
{
    pooled("Paint");
    pooled("Glass");
    addBookmark("Red", {"bookmark_group[A]", "switch_shader[Paint]:one"});
    addBookmark("Red", {"bookmark_group[B]", "switch_shader[Glass]:two", "switch_shader[Paint]:three"});
    convertStylarBookmarks(root, false);
    ASSERT_EQ(variants().sets().size(), 1U);
    EXPECT_EQ(variants().groups().size(), 2U);
    EXPECT_EQ(variants().sets()[0]->getGroup()->getName(), QStringLiteral("A"));
    EXPECT_EQ(stateOf("Red", "Glass"), "two");
    EXPECT_EQ(stateOf("Red", "Paint"), "three");
    EXPECT_EQ(root->getNChildren(), 0U);
}

TEST_F(BookmarkConversion, ASetOfAnEarlierImportIsTakenUpAgain)
{
    pooled("Paint");
    znVariantSet* before = znVariants::createVariantSet(QStringLiteral("Red"), true, nullptr);
    addBookmark("Red", {"bookmark_group[A]", "switch_shader[Paint]:one"});
    convertStylarBookmarks(root, false);
    EXPECT_EQ(znVariants::findVariantSet(QStringLiteral("Red")), before);
    EXPECT_EQ(before->getGroup(), nullptr);
    EXPECT_EQ(before->getMaterialStates().size(), 1U);
}

TEST_F(BookmarkConversion, AVariantOfAnEarlierImportIsTakenUpAgain)
{
    const osg::MaterialPtr paint = pooled("Paint");
    znMaterialVariant* before = znVariants::createMaterialVariant(paint, true);
    addBookmark("Red", {"switch_shader[Paint]:one"});
    convertStylarBookmarks(root, false);
    EXPECT_EQ(variants().materialVariants().size(), 1U);
    EXPECT_EQ(variants().sets()[0]->getMaterialStates()[0]->getVariant(), before);
}

TEST_F(BookmarkConversion, ASetThatCannotBeMadeLetsTheBookmarkGoUnread)
{
    pooled("Paint");
    const osg::UberCameraPtr camera = addCamera(addBookmark("", {"switch_shader[Paint]:one"}), {"cam"});
    const osg::RefPtr<osg::UberCameraPtr> holder(camera);
    convertStylarBookmarks(root, false);
    EXPECT_TRUE(variants().materialVariants().empty());
    EXPECT_EQ(root->getNChildren(), 0U);
    EXPECT_TRUE(znUberCameraPool::get(camera->getContainerId()) == camera);
}

TEST_F(BookmarkConversion, ASwitchOfAnUnknownMaterialIsIgnored)
{
    addBookmark("Red", {"switch_shader[Lost]:one"});
    convertStylarBookmarks(root, false);
    EXPECT_TRUE(variants().materialVariants().empty());
    EXPECT_TRUE(variants().sets()[0]->getMaterialStates().empty());
}

TEST_F(BookmarkConversion, MalformedSwitchesHaveTheirFixedMeaning)
{
    for (const char* name : {"a]b", "Paint", "y]switch_shader[Paint"})
        pooled(name);
    addBookmark("A", {"switch_shader[a]b]:c", "switch_shader[Paint"});
    addBookmark("B", {"xswitch_shader[Paint]:Red", "x[y]switch_shader[Paint]:Blue"});
    convertStylarBookmarks(root, false);
    EXPECT_EQ(stateOf("A", "a]b"), "c");
    EXPECT_EQ(stateOf("A", "Paint"), "witch_shader[Paint");
    EXPECT_EQ(stateOf("B", "Paint"), "Red");
    EXPECT_EQ(stateOf("B", "y]switch_shader[Paint"), "Blue");
}

TEST_F(BookmarkConversion, NamesAreUtf8)
{
    pooled("Lack ß");
    addBookmark("Grün", {"bookmark_group[Außen]", "switch_shader[Lack ß]:Türkis"});
    convertStylarBookmarks(root, false);
    EXPECT_EQ(stateOf("Grün", "Lack ß"), "Türkis");
    EXPECT_TRUE(znVariants::findVariantGroup(QString::fromUtf8("Außen")));
}

TEST_F(BookmarkConversion, MaterialsAreNotTouchedWithoutASet)
{
    pooled("Paint");
    osg::NodePtr node = addBookmark("Red", {"switch_shader[Paint]:one"});
    EXPECT_THAT(callsOf([&node] { initMaterialVariants(node, nullptr); }), IsEmpty());
}

TEST_F(InitVisibility, AMarkedNodeVariesInTheSetsThatItNames)
{
    addBookmark("Open Roof");
    addBookmark("Closed Roof");
    const osg::NodePtr roof = addTagged(addGroup(root, "body"), "roof",
                                        {"keep", "stylar::bookmark_visibilities", "bookmark[Open Roof]:visible",
                                         "bookmark[Closed Roof]:hidden", "bookmark[Lost]:visible"});
    convertStylarBookmarks(root, false);
    EXPECT_THAT(nodeStates("Open Roof"), ElementsAre("roof !Enable"));
    EXPECT_THAT(nodeStates("Closed Roof"), ElementsAre("roof !Disable"));
    EXPECT_EQ(variants().sets().size(), 2U);
    EXPECT_THAT(osg::tagsOf(roof), ElementsAre("keep"));
}

TEST_F(InitVisibility, TheHostIsAskedInThisOrder)
{
    znVariants::createVariantSet(QStringLiteral("Red"), true, nullptr);
    const osg::NodePtr part =
        addTagged(root, "part", {"bookmark[Red]:visible", "bookmark[Lost]:x", "stylar::bookmark_visibilities"});
    const std::string node = zn::tracetext::of(part), top = zn::tracetext::of(root);
    EXPECT_THAT(callsOf([this] { initVisibility(root); }),
                ElementsAre("znNodeUtils::getNodesWithTag(" + top + ", 'stylar::bookmark_visibilities')",
                            "znNodeUtils::getTags(" + node + ")", "znVariants::findVariantSet('Red')",
                            "znVariants::createNodeVariant(" + node + ", true)",
                            "znVariantSet::add('Red', 'part', '!Enable')", "znVariants::findVariantSet('Lost')",
                            "znNodeUtils::removeTags(" + node + ", ['bookmark[Red]:visible', 'bookmark[Lost]:x'])",
                            "znNodeUtils::removeTags(" + node + ", ['bookmark[Red]:visible', 'bookmark[Lost]:x'])",
                            "znNodeUtils::removeTag(" + node + ", 'stylar::bookmark_visibilities')"));
}

TEST_F(InitVisibility, AMarkAloneIsTakenAway)
{
    const osg::NodePtr part = addTagged(root, "part", {"stylar::bookmark_visibilities", "other"});
    EXPECT_THAT(callsTo({"znNodeUtils::removeTags"}, callsOf([this] { initVisibility(root); })), IsEmpty());
    EXPECT_THAT(osg::tagsOf(part), ElementsAre("other"));
    EXPECT_TRUE(variants().nodeVariants().empty());
}

TEST_F(InitVisibility, ANodeWithoutTheMarkKeepsItsTags)
{
    znVariants::createVariantSet(QStringLiteral("Red"), true, nullptr);
    const osg::NodePtr part = addTagged(root, "part", {"bookmark[Red]:visible"});
    initVisibility(root);
    EXPECT_THAT(osg::tagsOf(part), ElementsAre("bookmark[Red]:visible"));
    EXPECT_TRUE(variants().nodeVariants().empty());
}

TEST_F(InitVisibility, OnlyTheExactWordShowsANode)
{
    for (const char* set : {"a", "b", "c", "d", "Open"})
        znVariants::createVariantSet(QString::fromUtf8(set), true, nullptr);
    addTagged(root, "part",
              {"stylar::bookmark_visibilities", "bookmark[a]b]:visible", "bookmark[b]:Visible", "bookmark[c]:visible ",
               "bookmark[d]:", "bookmark[Open"});
    initVisibility(root);
    for (const char* set : {"a", "b", "c", "d", "Open"})
        EXPECT_THAT(nodeStates(set), ElementsAre("part !Disable")) << set;
}

TEST_F(InitVisibility, ATagWithoutAValueThrowsAndWhatWasDoneStays)
{
    znVariants::createVariantSet(QStringLiteral("Red"), true, nullptr);
    const osg::NodePtr part =
        addTagged(root, "part", {"stylar::bookmark_visibilities", "bookmark[Red]:visible", "bookmark[Red]"});
    try {
        initVisibility(root);
        FAIL() << "nothing was thrown";
    } catch (const std::out_of_range& error) {
        EXPECT_STREQ(error.what(), "invalid string position");
    }
    EXPECT_THAT(nodeStates("Red"), ElementsAre("part !Enable"));
    EXPECT_EQ(osg::tagsOf(part).size(), 3U);
}

TEST_F(InitVisibility, EveryMarkedNodeIsSeenAParentFirst)
{
    znVariants::createVariantSet(QStringLiteral("Red"), true, nullptr);
    const Tags tags = {"stylar::bookmark_visibilities", "bookmark[Red]:visible"};
    osg::setTags(root, tags);
    addTagged(addTagged(root, "a", tags), "b", tags);
    initVisibility(root);
    EXPECT_THAT(nodeStates("Red"), ElementsAre("Root !Enable", "a !Enable", "b !Enable"));
}

} // namespace
