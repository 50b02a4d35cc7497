#include "files/glb/GlbNames.h"

#include <gtest/gtest.h>

namespace files::glb
{

namespace
{

TEST(GlbNamesTest, PercentEncodedNamesAreDecoded)
{
    EXPECT_EQ(decodedName("oak%20crate"), "oak crate");
    EXPECT_EQ(decodedName("Gr%C3%B6%c3%9fe"), "Größe");
    EXPECT_EQ(decodedName("a%2Fb"), "a/b");
}

TEST(GlbNamesTest, WhatIsNoEncodingStaysAsItIs)
{
    for (const char* name : {"", "wheel", "50% steel", "100%", "5%2", "oak%20crate 50%", "%zz", "%FF", "%C3x", "a%00b",
                             "tab%09stop", "100%x20"})
        EXPECT_EQ(decodedName(name), name);
}

TEST(GlbNamesTest, ColoursHaveAWord)
{
    struct Row {
        osg::Color3f color;
        const char* word;
    };
    const Row rows[] = {{{0, 0, 0}, "black"},     {{0.1f, 0.1f, 0.1f}, "black"}, {{0.5f, 0.5f, 0.5f}, "grey"},
                        {{1, 1, 1}, "white"},     {{0.9f, 0.9f, 0.9f}, "grey"},  {{1, 0, 0}, "red"},
                        {{1, 0, 0.1f}, "red"},    {{1, 0.5f, 0}, "orange"},      {{0.5f, 0.25f, 0}, "brown"},
                        {{1, 1, 0}, "yellow"},    {{0, 1, 0}, "green"},          {{0.2f, 0.6f, 0.3f}, "green"},
                        {{0, 1, 1}, "turquoise"}, {{0, 0, 1}, "blue"},           {{0.6f, 0, 1}, "purple"},
                        {{1, 0, 0.6f}, "pink"},   {{1, 0.2f, 0.2f}, "red"}};
    for (const Row& row : rows)
        EXPECT_EQ(colorWord(row.color), row.word) << row.color.red << " " << row.color.green << " " << row.color.blue;
    EXPECT_EQ(colorName({0, 0.5f, 1}), "blue #0080ff");
}

TEST(GlbNamesTest, CodesAreNoNames)
{
    EXPECT_TRUE(isColorCode("#0000ff"));
    EXPECT_TRUE(isColorCode("#0000FF 30%"));
    EXPECT_FALSE(isColorCode("#0000f"));
    EXPECT_FALSE(isColorCode("#4 screw, long"));
    EXPECT_FALSE(isColorCode("00000ff"));
}

TEST(GlbNamesTest, TheSecondOfANameIsNumbered)
{
    UniqueNames names;
    EXPECT_EQ(names.unique("steel"), "steel");
    EXPECT_EQ(names.unique("steel 2"), "steel 2");
    EXPECT_EQ(names.unique("steel"), "steel 3");
    EXPECT_EQ(names.unique("steel"), "steel 4");
    EXPECT_EQ(names.unique("steel 2"), "steel 2 2");
}

} // namespace

} // namespace files::glb
