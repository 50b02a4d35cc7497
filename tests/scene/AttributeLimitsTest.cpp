#include "scene/AttributeLimits.h"

#include <gtest/gtest.h>

using osg::Attribute;
using osg::AttributeDate;
using osg::AttributeList;
using osg::bounded;
using osg::MostAttributes;
using osg::MostTextBytes;

namespace
{

const std::string longest(MostTextBytes, 'x');

Attribute cutShort(std::int64_t count)
{
    return {"Attributes cut short", count};
}

TEST(AttributeLimits, WhatIsWithinThemStays)
{
    const AttributeList attributes = {{longest, longest, longest}, {"a", std::int64_t(1)}};
    EXPECT_EQ(bounded(attributes), attributes);
}

TEST(AttributeLimits, AttributesBeyondAreCounted)
{
    const AttributeList attributes = bounded(AttributeList(MostAttributes + 900'000, {"a", true}));
    ASSERT_EQ(attributes.size(), MostAttributes + 1);
    EXPECT_EQ(attributes.back(), (Attribute{"Attributes left out", std::int64_t(900'000)}));
}

TEST(AttributeLimits, EveryTextOfAnAttributeIsCut)
{
    const std::string tooLong = longest + std::string(9 * MostTextBytes, 'y');
    EXPECT_EQ(bounded({{tooLong, true}}), (AttributeList{{longest, true}, cutShort(1)}));
    EXPECT_EQ(bounded({{"a", tooLong}}), (AttributeList{{"a", longest}, cutShort(1)}));
    EXPECT_EQ(bounded({{"a", 1.5, tooLong}}), (AttributeList{{"a", 1.5, longest}, cutShort(1)}));
    EXPECT_EQ(bounded({{"a", AttributeDate{tooLong}}}), (AttributeList{{"a", AttributeDate{longest}}, cutShort(1)}));
    EXPECT_EQ(bounded({{"a", std::vector<std::string>{"b", tooLong, tooLong}}, {tooLong, tooLong}}),
              (AttributeList{{"a", std::vector<std::string>{"b", longest, longest}}, {longest, longest}, cutShort(2)}));
}

TEST(AttributeLimits, ListsAreCut)
{
    const AttributeList attributes = bounded({{"a", std::vector<std::string>(MostAttributes + 1, "b")}});
    EXPECT_EQ(attributes, (AttributeList{{"a", std::vector<std::string>(MostAttributes, "b")}, cutShort(1)}));
}

TEST(AttributeLimits, NoLetterIsCutInTwo)
{
    const std::string letters = longest.substr(1) + "\xC3\xA4";
    EXPECT_EQ(bounded({{"a", letters}})[0], (Attribute{"a", longest.substr(1)}));
}

} // namespace
