#include "importer/inventory/SceneQuery.h"

#include <gtest/gtest.h>

namespace
{

using namespace importer::inventory;

QueryFacts bolt()
{
    return {"Bolt M8",
            "bolt",
            "cart/bolt",
            "zinc",
            {{"Material", std::string("Steel")}, {"Mass", 2.5, "kg"}, {"Teeth", std::int64_t(17)}, {"Bought", true}}};
}

bool matches(const char* query, const QueryFacts& facts = bolt())
{
    QString error;
    const auto parsed = SceneQuery::parse(QString::fromUtf8(query), error);
    EXPECT_TRUE(parsed) << query << ": " << error.toStdString();
    return parsed && parsed->matches(facts);
}

QString errorOf(const char* query)
{
    QString error;
    EXPECT_FALSE(SceneQuery::parse(QString::fromUtf8(query), error)) << query;
    return error;
}

TEST(SceneQuery, TextsAreComparedWholeOrWithAPattern)
{
    EXPECT_TRUE(matches("name=Bolt M8"));
    EXPECT_FALSE(matches("name=Bolt"));
    EXPECT_TRUE(matches("name~Bolt*"));
    EXPECT_FALSE(matches("name~bolt*"));
    EXPECT_TRUE(matches("name!=Bolt"));
    EXPECT_TRUE(matches("name!~Nut*"));
    EXPECT_TRUE(matches("product=bolt"));
    EXPECT_TRUE(matches("id~cart/*"));
    EXPECT_TRUE(matches("material=zinc"));
}

TEST(SceneQuery, AttributesAreFoundByName)
{
    EXPECT_TRUE(matches("attribute:Material=Steel"));
    EXPECT_FALSE(matches("attribute:Material=steel"));
    EXPECT_TRUE(matches("attribute:Mat*~St*l"));
    EXPECT_TRUE(matches("attribute:Bought=true"));
    EXPECT_TRUE(matches("attribute:Mass"));
    EXPECT_FALSE(matches("attribute:Colour"));
    EXPECT_TRUE(matches("!attribute:Colour"));
}

TEST(SceneQuery, NumbersAreComparedAsNumbers)
{
    EXPECT_TRUE(matches("attribute:Mass=2.50"));
    EXPECT_TRUE(matches("attribute:Mass>2.4"));
    EXPECT_FALSE(matches("attribute:Mass>2.5"));
    EXPECT_TRUE(matches("attribute:Mass>=2.5"));
    EXPECT_TRUE(matches("attribute:Mass<=2.5"));
    EXPECT_FALSE(matches("attribute:Mass<2.5"));
    EXPECT_TRUE(matches("attribute:Teeth<100"));
    EXPECT_FALSE(matches("attribute:Material>1"));
    EXPECT_FALSE(matches("attribute:Mass>heavy"));
}

TEST(SceneQuery, AndBindsStrongerThanOr)
{
    EXPECT_TRUE(matches("name~Bolt* | name~Nut* & attribute:Colour"));
    EXPECT_FALSE(matches("(name~Bolt* | name~Nut*) & attribute:Colour"));
    EXPECT_TRUE(matches("name~Bolt* & attribute:Material=Steel"));
    EXPECT_FALSE(matches("!(name~Bolt* & attribute:Material=Steel)"));
    EXPECT_TRUE(matches("!!name~Bolt*"));
}

TEST(SceneQuery, QuotesTakeTextAsItIs)
{
    EXPECT_TRUE(matches("name=\"a|b & (c)\" ", {"a|b & (c)", {}, {}, {}, {}}));
    EXPECT_TRUE(matches("attribute:\"x=y\"=z", {{}, {}, {}, {}, {{"x=y", std::string("z")}}}));
    EXPECT_TRUE(matches("name=\" a \"", {" a ", {}, {}, {}, {}}));
    EXPECT_TRUE(matches("name= a ", {"a", {}, {}, {}, {}}));
    EXPECT_TRUE(matches("name=", {"", {}, {}, {}, {}}));
}

TEST(SceneQuery, WhatIsWrongIsToldWithItsPlace)
{
    EXPECT_EQ(errorOf("colour=red"),
              QStringLiteral("a test begins with name, product, id, material or attribute:NAME (at character 11)"));
    EXPECT_EQ(errorOf("name"), QStringLiteral("a comparison is missing (at character 5)"));
    EXPECT_EQ(errorOf("(name=a"), QStringLiteral("')' is missing (at character 8)"));
    EXPECT_EQ(errorOf("name=a)"), QStringLiteral("'|' or '&' is missing (at character 7)"));
    EXPECT_EQ(errorOf("name=\"a"), QStringLiteral("a closing quote is missing (at character 6)"));
    EXPECT_FALSE(errorOf("").isEmpty());
    EXPECT_FALSE(errorOf("name=a |").isEmpty());
    EXPECT_EQ(errorOf(std::string(101, '(').c_str()),
              QStringLiteral("the brackets are nested too deeply (at character 102)"));
}

} // namespace
