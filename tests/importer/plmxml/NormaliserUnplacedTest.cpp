// Occurrences that speak of no place of the structure: they are passed over, and told.

#include "tests/importer/plmxml/NormaliserTest.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

class NormaliserUnplacedTest : public NormaliserTest
{
protected:
    /// "line id path" of each occurrence that stands nowhere.
    std::vector<std::string> unplaced() const
    {
        std::vector<std::string> texts;
        for (const zn::PassedOccurrence& each : m_result.facts.unplaced)
            texts.push_back(QStringLiteral("%1 %2 %3").arg(each.line).arg(each.id, each.path).trimmed().toStdString());
        return texts;
    }

    /// A graph that places `q` in `p`; each occurrence on a line of its own, from the second.
    void normaliseGraph(const std::string& occurrences, const std::string& below = {})
    {
        normalise("<ProductDef><InstanceGraph rootRefs='a'><Instance id='a' partRef='p'/><Instance id='b' "
                  "partRef='#q'/></InstanceGraph><Part id='p' name='P' instanceRefs='b'/><Part id='q' name='Q'/>"
                  "<ProductView>" +
                  occurrences + "</ProductView></ProductDef>" + below);
    }
};

TEST_F(NormaliserUnplacedTest, OccurrencesWhosePathIsNoneOfTheGraphAreTold)
{
    normaliseGraph("\n<Occurrence id='right' instanceRefs='#a #b'/>"
                   "\n<Occurrence id='turned' instanceRefs='#b #a'/>"
                   "\n<Occurrence id='gone' instanceRefs='#a #c'/>"
                   "\n<Occurrence instanceRefs='#b'/>"
                   "\n<Occurrence id='label'><ApplicationRef label='P;0;0:Q'/></Occurrence>");
    EXPECT_THAT(unplaced(), ElementsAre("3 turned #b #a", "4 gone #a #c", "5  #b", "6 label"));
    EXPECT_EQ(m_result.facts.unplacedCount, 4u);
    EXPECT_EQ(m_result.structure.overrides.size(), 1u);
}

TEST_F(NormaliserUnplacedTest, WhatStandsBelowOneWithoutPlaceHasNoneEither)
{
    normaliseGraph(
        "\n<Occurrence id='o' instanceRefs='#c' occurrenceRefs='u'/>\n<Occurrence id='u' instanceRefs='#b'/>");
    EXPECT_THAT(unplaced(), ElementsAre("2 o #c", "3 u #b"));
}

TEST_F(NormaliserUnplacedTest, OccurrencesOutsideOfTheViewAreToldToo)
{
    normaliseGraph("", "\n<Occurrence id='o' instanceRefs='#c'/>");
    EXPECT_THAT(unplaced(), ElementsAre("2 o #c"));
}

TEST_F(NormaliserUnplacedTest, OccurrencesThatNoRootLeadsToAreTold)
{
    normalise("<ProductView rootRefs='a'><Occurrence id='a' name='A' occurrenceRefs='b'/><Occurrence id='b'/>"
              "\n<Occurrence id='lost' name='Lost' occurrenceRefs='below'/>\n<Occurrence id='below'/></ProductView>"
              "\n<Occurrence id='outside'/>");
    EXPECT_THAT(places(), ElementsAre("A 0 0 0", "b 0 0 0"));
    EXPECT_THAT(unplaced(), ElementsAre("2 lost", "3 below", "4 outside"));
}

TEST_F(NormaliserUnplacedTest, OccurrencesOfAnotherViewAreNotMeant)
{
    normalise("<ProductView rootRefs='a'><Occurrence id='a'/></ProductView><ProductView><Occurrence id='b'/>"
              "</ProductView>");
    EXPECT_THAT(unplaced(), IsEmpty());
    EXPECT_EQ(m_result.facts.otherViews.size(), 1);
}

TEST_F(NormaliserUnplacedTest, NoneHasAPlaceWhereInstancesStandByThemselves)
{
    normalise("<Instance id='a' name='A'/>\n<Occurrence id='o' instanceRefs='#a'/>");
    EXPECT_EQ(m_result.facts.treeFrom, QStringLiteral("flat"));
    EXPECT_THAT(unplaced(), ElementsAre("2 o #a"));
}

TEST_F(NormaliserUnplacedTest, OfManyTheFirstAreKeptAndAllAreCounted)
{
    std::string many;
    for (int i = 0; i < 1500; ++i)
        many += "\n<Occurrence instanceRefs='#c'/>";
    normaliseGraph(many);
    EXPECT_EQ(m_result.facts.unplacedCount, 1500u);
    ASSERT_EQ(m_result.facts.unplaced.size(), 1000u);
    EXPECT_EQ(m_result.facts.unplaced.back().line, 1001);
}

} // namespace
