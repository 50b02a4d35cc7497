#include "scene/NamePattern.h"

#include <gtest/gtest.h>

#include <string>

namespace
{

using osg::matchesPattern;

TEST(NamePattern, TheWholeTextMustMatch)
{
    EXPECT_TRUE(matchesPattern("Bolt", "Bolt"));
    EXPECT_FALSE(matchesPattern("Bolt", "bolt"));
    EXPECT_FALSE(matchesPattern("Bolt", "Bolts"));
    EXPECT_FALSE(matchesPattern("Bolts", "Bolt"));
    EXPECT_TRUE(matchesPattern("", ""));
    EXPECT_FALSE(matchesPattern("", "x"));
}

TEST(NamePattern, AStarStandsForAnything)
{
    EXPECT_TRUE(matchesPattern("*", ""));
    EXPECT_TRUE(matchesPattern("Bolt*", "Bolt M8"));
    EXPECT_TRUE(matchesPattern("*M8", "Bolt M8"));
    EXPECT_TRUE(matchesPattern("B*t*8**", "Bolt M8"));
    EXPECT_TRUE(matchesPattern("*ab*ab", "abaabab"));
    EXPECT_FALSE(matchesPattern("*ab*abc", "abaabab"));
}

TEST(NamePattern, AQuestionMarkStandsForOneLetter)
{
    EXPECT_TRUE(matchesPattern("M?", "M8"));
    EXPECT_FALSE(matchesPattern("M?", "M"));
    EXPECT_FALSE(matchesPattern("M?", "M10"));
    EXPECT_TRUE(matchesPattern("R?d", "R\xC3\xA4"
                                      "d"));
    EXPECT_FALSE(matchesPattern("R??d", "R\xC3\xA4"
                                        "d"));
}

TEST(NamePattern, ManyStarsDoNotMultiply)
{
    EXPECT_FALSE(matchesPattern("*a*a*a*a*a*a*a*a*a*a*b", std::string(3000, 'a')));
}

} // namespace
