#include "files/scenefile/AttributeTags.h"

#include <gtest/gtest.h>

using namespace osg::scenefile::converted;
using osg::Attribute;

namespace
{

TEST(AttributeTags, TagsOfEachType)
{
    EXPECT_EQ(attributeTag({"Number", std::string("A=1")}), "ptx::attribute::Number=A=1");
    EXPECT_EQ(attributeTag({"Teeth", std::int64_t(17)}), "ptx::attribute:integer::Teeth=17");
    EXPECT_EQ(attributeTag({"Mass", 2.5, "kg"}), "ptx::attribute:real:kg::Mass=2.5");
    EXPECT_EQ(attributeTag({"Bought", false}), "ptx::attribute:boolean::Bought=false");
    EXPECT_EQ(attributeTag({"Made", osg::AttributeDate{"2024-05-31"}}), "ptx::attribute:date::Made=2024-05-31");
    EXPECT_EQ(attributeTag({"Colours", std::vector<std::string>{"red", "green"}}),
              "ptx::attribute:list::Colours=red\ngreen");
}

TEST(AttributeTags, WhatTagsTellComesBack)
{
    for (const Attribute& attribute :
         {Attribute{"a::b=c%3D:", std::string("x=y"), {}}, Attribute{":", std::string(), {}},
          Attribute{"i", std::int64_t(-3), {}}, Attribute{"r=", 0.1, "a:b=%"}, Attribute{"b", true, {}},
          Attribute{"d", osg::AttributeDate{"2024"}, {}}, Attribute{"l", std::vector<std::string>{"", "x", ""}, {}},
          Attribute{"text", std::string("7"), "mm"}})
        EXPECT_EQ(attributeOf(attributeTag(attribute)), attribute) << attributeTag(attribute);
}

TEST(AttributeTags, AValueThatIsNotOfItsTypeBecomesAText)
{
    EXPECT_EQ(attributeOf("ptx::attribute:integer::n=12 bolts"), (Attribute{"n", std::string("12 bolts")}));
    EXPECT_EQ(attributeOf("ptx::attribute:real:mm::n=x"), (Attribute{"n", std::string("x"), "mm"}));
    EXPECT_EQ(attributeOf("ptx::attribute:boolean::n=yes"), (Attribute{"n", std::string("yes")}));
}

TEST(AttributeTags, KnownFactsHaveNamesTypesAndUnits)
{
    EXPECT_EQ(attributeOf("ptx::density=7.85"), (Attribute{"Density", 7.85, "g/cm3"}));
    EXPECT_EQ(attributeOf("ptx::validation::volume=6.25"), (Attribute{"Validation volume", 6.25, "mm3"}));
    EXPECT_EQ(attributeOf("ptx::validation::centroid=0.5 1 1.75"),
              (Attribute{"Validation centroid", std::vector<std::string>{"0.5", "1", "1.75"}, "mm"}));
    EXPECT_EQ(attributeOf("ptx::layer=sketch=7"), (Attribute{"Layer", std::string("sketch=7")}));
}

TEST(AttributeTags, OtherTagsAreNoAttributes)
{
    for (const char* tag : {"ptx::converted", "ptx::format=STEP", "ptx::missing=x\n/y", "ptx::left-out=1 x\n/y",
                            "stylar::bookmark=a", "layer=1", "ptx::attribute:colour::a=b", "ptx::attribute:integer=3"})
        EXPECT_EQ(attributeOf(tag), std::nullopt) << tag;
}

TEST(AttributeTags, TheRestStaysInItsOrder)
{
    std::vector<std::string> tags = {"b", "ptx::layer=1", "a", "ptx::attribute::x=y"};
    EXPECT_EQ(takeAttributes(tags), (osg::AttributeList{{"Layer", std::string("1")}, {"x", std::string("y")}}));
    EXPECT_EQ(tags, (std::vector<std::string>{"b", "a"}));
}

} // namespace
