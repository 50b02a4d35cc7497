#include "optimization/BookmarkTags.h"

#include <gtest/gtest.h>

#include <stdexcept>

using namespace optimization;

namespace
{

using namespace BookmarkTags;

TEST(BookmarkTags, AGroupTagTellsItsName)
{
    EXPECT_EQ(groupName("bookmark_group[Exterior]"), "Exterior");
    EXPECT_EQ(groupName("bookmark_group[]"), "");
    EXPECT_EQ(groupName("x bookmark_group[Ä b]c]"), "Ä b");
}

TEST(BookmarkTags, AGroupNameRunsFromTheFirstBracketOfTheTag)
{
    EXPECT_EQ(groupName("x[ybookmark_group[Exterior]"), "ybookmark_group[Exterior");
}

TEST(BookmarkTags, AGroupTagWithoutAClosingBracketRunsToItsEnd)
{
    EXPECT_EQ(groupName("bookmark_group[Exterior"), "Exterior");
    EXPECT_EQ(groupName("]bookmark_group[Exterior"), "Exterior");
}

TEST(BookmarkTags, OtherTagsAreNoGroups)
{
    EXPECT_EQ(groupName("bookmark[Exterior]:visible"), std::nullopt);
    EXPECT_EQ(groupName("Bookmark_group[Exterior]"), std::nullopt);
    EXPECT_EQ(groupName(""), std::nullopt);
}

TEST(BookmarkTags, ASwitchTagTellsMaterialAndState)
{
    EXPECT_EQ(materialSwitch("switch_shader[Roof Glass]:Tinted"), (MaterialSwitch{"Roof Glass", "Tinted"}));
    EXPECT_EQ(materialSwitch("switch_shader[Roof]:"), (MaterialSwitch{"Roof", ""}));
}

TEST(BookmarkTags, AMaterialNameEndsAtBracketAndColonOnly)
{
    EXPECT_EQ(materialSwitch("switch_shader[a]b]:c"), (MaterialSwitch{"a]b", "c"}));
}

TEST(BookmarkTags, ASwitchTagMayStandAnywhereInTheText)
{
    EXPECT_EQ(materialSwitch("xswitch_shader[Paint]:Red"), (MaterialSwitch{"Paint", "Red"}));
    EXPECT_EQ(materialSwitch("x[y]switch_shader[Paint]:Red"), (MaterialSwitch{"y]switch_shader[Paint", "Red"}));
}

TEST(BookmarkTags, ASwitchTagWithoutAnEndLosesItsFirstCharacterToTheState)
{
    EXPECT_EQ(materialSwitch("switch_shader[Paint"), (MaterialSwitch{"Paint", "witch_shader[Paint"}));
    EXPECT_EQ(materialSwitch("switch_shader[Paint]"), (MaterialSwitch{"Paint]", "witch_shader[Paint]"}));
}

TEST(BookmarkTags, OtherTagsAreNoSwitches)
{
    EXPECT_EQ(materialSwitch("Switch_Shader[Paint]:Red"), std::nullopt);
    EXPECT_EQ(materialSwitch("switch_shader Paint"), std::nullopt);
}

TEST(BookmarkTags, AVisibilityTagTellsSetAndValue)
{
    EXPECT_EQ(visibility("bookmark[Open Roof]:visible"), (Visibility{"Open Roof", true}));
    EXPECT_EQ(visibility("bookmark[Closed Roof]:hidden"), (Visibility{"Closed Roof", false}));
    EXPECT_EQ(visibility("my bookmark[Open Roof]=visible"), (Visibility{"Open Roof", true}));
}

TEST(BookmarkTags, OnlyTheExactWordIsVisible)
{
    EXPECT_FALSE(visibility("bookmark[a]:Visible")->visible);
    EXPECT_FALSE(visibility("bookmark[a]:visible ")->visible);
    EXPECT_FALSE(visibility("bookmark[a]: visible")->visible);
    EXPECT_FALSE(visibility("bookmark[a]:")->visible);
}

TEST(BookmarkTags, ASetNameEndsAtTheFirstBracketAndTheValueBeginsBehindOneMoreCharacter)
{
    EXPECT_EQ(visibility("bookmark[a]b]:visible"), (Visibility{"a", false}));
    EXPECT_EQ(visibility("bookmark[a]]visible"), (Visibility{"a", true}));
}

TEST(BookmarkTags, AVisibilityTagThatEndsWithItsBracketIsRefused)
{
    try {
        visibility("bookmark[Open Roof]");
        FAIL() << "nothing was thrown";
    } catch (const std::out_of_range& error) {
        EXPECT_STREQ(error.what(), "invalid string position");
    }
}

TEST(BookmarkTags, AVisibilityTagWithoutABracketHasTheTagButForItsFirstCharacterAsValue)
{
    EXPECT_EQ(visibility("bookmark[Open"), (Visibility{"Open", false}));
}

TEST(BookmarkTags, AGroupTagIsNoVisibilityTag)
{
    EXPECT_EQ(visibility("bookmark_group[Exterior]"), std::nullopt);
}

} // namespace
