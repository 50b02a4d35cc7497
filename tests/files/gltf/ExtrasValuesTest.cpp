#include "files/gltf/ExtrasValues.h"

#include "scene/AttributeLimits.h"

#include <gtest/gtest.h>

#include <cmath>

namespace
{

using files::gltf::attributesIn;
using files::gltf::foreignAttributesIn;
using nlohmann::json;
using osg::AttributeDate;
using osg::AttributeList;
using Texts = std::vector<std::string>;

class ExtrasValuesTest : public testing::Test
{
protected:
    AttributeList own(const char* text) { return attributesIn(json::parse(text), m_leftOut); }
    AttributeList foreign(const char* text) { return foreignAttributesIn(json::parse(text), m_leftOut); }

    std::size_t m_leftOut = 0;
};

TEST_F(ExtrasValuesTest, ValuesHaveTheirTypes)
{
    const char* text = R"({"a": "x", "b": -7, "c": 5.0, "d": true, "e": 9007199254740993, "f": 18446744073709551615})";
    const AttributeList expected = {{"a", std::string("x")},
                                    {"b", std::int64_t(-7)},
                                    {"c", 5.0},
                                    {"d", true},
                                    {"e", std::int64_t(9007199254740993)},
                                    {"f", 18446744073709551615.0}};
    EXPECT_EQ(own(text), expected);
    EXPECT_EQ(foreign(text), expected);
}

TEST_F(ExtrasValuesTest, UnitsDatesAndListsAreObjects)
{
    EXPECT_EQ(own(R"({"a": {"value": 7.5, "unit": "kg"}, "b": {"value": "2024-05-31", "type": "date"},
                      "c": {"value": ["x", "y"], "unit": "mm"}, "d": {"value": "M8", "unit": "thread"},
                      "e": {"value": "-inf", "unit": "m", "type": "real"}})"),
              (AttributeList{{"a", 7.5, "kg"},
                             {"b", AttributeDate{"2024-05-31"}},
                             {"c", Texts{"x", "y"}, "mm"},
                             {"d", std::string("M8"), "thread"},
                             {"e", -HUGE_VAL, "m"}}));
    EXPECT_EQ(own(R"({"a": {"value": "many", "type": "real"}})"), (AttributeList{{"a", std::string("many")}}));
}

TEST_F(ExtrasValuesTest, AnArrayIsSeveralValuesOfANameInOurFormAndAListInOthers)
{
    EXPECT_EQ(own(R"({"b": ["x", {"value": ["y"]}, 2], "a": []})"),
              (AttributeList{{"b", std::string("x")}, {"b", Texts{"y"}}, {"b", std::int64_t(2)}}));
    EXPECT_EQ(foreign(R"({"b": ["x", 2, 0.5, false], "a": []})"),
              (AttributeList{{"a", Texts{}}, {"b", Texts{"x", "2", "0.5", "false"}}}));
    EXPECT_EQ(m_leftOut, 0u);
}

TEST_F(ExtrasValuesTest, WhatStandsInObjectsIsNamedByTheWayToIt)
{
    EXPECT_EQ(foreign(R"({"bom": {"part": {"no": 7, "": "x"}, "value": 1}, "c": {"value": 3, "unit": "kg"}})"),
              (AttributeList{{"bom.part.", std::string("x")},
                             {"bom.part.no", std::int64_t(7)},
                             {"bom.value", std::int64_t(1)},
                             {"c", std::int64_t(3), "kg"}}));
}

TEST_F(ExtrasValuesTest, ExtrasThatAreNoObjectHaveTheirOwnName)
{
    EXPECT_EQ(foreign(R"("text")"), (AttributeList{{"extras", std::string("text")}}));
    EXPECT_EQ(foreign("[1, 2]"), (AttributeList{{"extras", Texts{"1", "2"}}}));
    EXPECT_EQ(foreign("null"), AttributeList());
}

TEST_F(ExtrasValuesTest, WhatIsNoValueIsCountedAndNullIsNone)
{
    EXPECT_EQ(foreign(R"({"a": [1, [2]], "b": [{"c": 1}], "d": null, "e": {"value": [null]}, "f": 1})"),
              (AttributeList{{"f", std::int64_t(1)}}));
    EXPECT_EQ(m_leftOut, 3u) << "the arrays a, b and e.value";
    EXPECT_EQ(own(R"({"a": [[1], 2]})"), (AttributeList{{"a", std::int64_t(2)}}));
    EXPECT_EQ(m_leftOut, 4u);
}

TEST_F(ExtrasValuesTest, LongNamesAreNotRepeated)
{
    json object = {{std::string(998, 'n'), {{"a", 1}, {"bc", 2}}}, {std::string(2000, 'm'), 3}};
    EXPECT_EQ(foreign(object.dump().c_str()), (AttributeList{{std::string(2000, 'm'), std::int64_t(3)},
                                                             {std::string(998, 'n') + ".a", std::int64_t(1)}}));
    EXPECT_EQ(m_leftOut, 1u);
}

TEST_F(ExtrasValuesTest, ThereAreNoMoreThanTheLimitsAllow)
{
    json object = json::object();
    for (int i = 0; i < 1'000'000; ++i)
        object.emplace(std::to_string(i), i);
    const AttributeList attributes = foreignAttributesIn(object, m_leftOut);
    ASSERT_EQ(attributes.size(), osg::MostAttributes + 1);
    EXPECT_EQ(attributes.back(), (osg::Attribute{"Attributes left out", std::int64_t(900'000)}));
}

} // namespace
