#include "importer/plmxml/References.h"

#include <gmock/gmock.h>

using namespace importer::plmxml;
using testing::ElementsAre;

namespace
{

TEST(ReferencesTest, AReferenceIsAnIdWithOrWithoutHashOrInAnotherFile)
{
    EXPECT_EQ(referenceOf("id7").id, "id7");
    EXPECT_EQ(referenceOf("#id7").id, "id7");
    EXPECT_EQ(referenceOf("#id7").file, "");
    EXPECT_EQ(referenceOf("a.plmxml#id7").file, "a.plmxml");
    EXPECT_EQ(referenceOf("a.plmxml#id7").id, "id7");
}

TEST(ReferencesTest, ListsAreSeparatedByAnyWhiteSpace)
{
    EXPECT_THAT(wordsOf("  a\n b\tc "), ElementsAre("a", "b", "c"));
    EXPECT_THAT(wordsOf(" "), ElementsAre());
}

TEST(ReferencesTest, WhatLeadsNowhereIsNotedOnceWithItsLine)
{
    const auto document = SourceDocument::parse("<PLMXML>\n<Instance id='i' partRef='#gone'/></PLMXML>");
    ASSERT_TRUE(document);
    const ElementIndex index(*document);
    References references(index);
    const pugi::xml_node instance = index.find(ElementKind::Instance, "i");
    EXPECT_FALSE(references.follow(instance, "partRef", ElementKind::Part));
    EXPECT_FALSE(references.follow(instance, "partRef", ElementKind::Part));
    EXPECT_FALSE(references.follow(instance, "materialRef", ElementKind::Material));
    ASSERT_EQ(references.danglingCount(), 1u);
    EXPECT_EQ(references.dangling()[0].line, 2);
    EXPECT_EQ(references.dangling()[0].element, QStringLiteral("Instance"));
    EXPECT_EQ(references.dangling()[0].attribute, QStringLiteral("partRef"));
    EXPECT_EQ(references.dangling()[0].target, QStringLiteral("#gone"));
}

} // namespace
