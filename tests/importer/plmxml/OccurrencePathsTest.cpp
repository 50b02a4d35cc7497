// Occurrences whose path leads over other occurrences, and several of one place.

#include "tests/importer/plmxml/NormaliserTest.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

class OccurrencePathsTest : public NormaliserTest
{
protected:
    /// A chain of three; each occurrence on a line of its own, from the second.
    void normaliseGraph(const std::string& occurrences)
    {
        normalise("<ProductDef><InstanceGraph rootRefs='a'><Instance id='a' name='A' partRef='p'/><Instance id='b' "
                  "name='B' partRef='#q'/><Instance id='c' name='C'/></InstanceGraph><Part id='p' instanceRefs='b'/>"
                  "<Part id='q' instanceRefs='c'/><ProductView>" +
                  occurrences + "</ProductView></ProductDef>");
    }
};

TEST_F(OccurrencePathsTest, APathMayConsistOfInstances)
{
    normaliseGraph("<Occurrence pathRefs='#a #b #c' name='X'/>");
    EXPECT_THAT(places(), ElementsAre("A 0 0 0", "B 0 0 0", "X 0 0 0"));
    EXPECT_EQ(m_result.way, Way::AsText) << "the loader knows no such attribute";
}

TEST_F(OccurrencePathsTest, APathMayBeginWithAnOccurrence)
{
    normaliseGraph("<Occurrence pathRefs='#two #c' name='X'/><Occurrence id='two' pathRefs='#one b' name='Y'/>"
                   "<Occurrence id='one' instanceRefs='#a' name='Z'/>");
    EXPECT_THAT(places(), ElementsAre("Z 0 0 0", "Y 0 0 0", "X 0 0 0"));
    normaliseGraph("<Occurrence pathRefs='#one #b #c' name='X'/><Occurrence id='one' instanceRefs='#a'/>");
    EXPECT_THAT(places(), ElementsAre("A 0 0 0", "B 0 0 0", "X 0 0 0"));
}

TEST_F(OccurrencePathsTest, WhatIsCompletedByTheOccurrenceAboveIsWrittenOut)
{
    normaliseGraph("<Occurrence instanceRefs='#a' occurrenceRefs='x'/><Occurrence id='x' instanceRefs='#b' "
                   "materialRef='m'/>");
    EXPECT_EQ(m_result.way, Way::AsText) << "the loader takes paths from the root only";
    normaliseGraph("<Occurrence instanceRefs='#a' occurrenceRefs='x'/><Occurrence id='x' instanceRefs='#a #b'/>");
    EXPECT_EQ(m_result.way, Way::AsItStands);
}

TEST_F(OccurrencePathsTest, APathMayHaveOccurrencesOfAPartWithin)
{
    normaliseGraph("<Occurrence pathRefs='#a #inner' name='X'/>\n<Occurrence id='inner' instanceRefs='#b #c'/>");
    EXPECT_THAT(places(), ElementsAre("A 0 0 0", "B 0 0 0", "X 0 0 0"));
    EXPECT_EQ(m_result.facts.unplacedCount, 1u) << "the inner one leads from no root";
}

TEST_F(OccurrencePathsTest, TheInstancesOfAPathCountBefore)
{
    normaliseGraph("<Occurrence instanceRefs='#a #b' pathRefs='#a' name='X'/>");
    EXPECT_THAT(places(), ElementsAre("A 0 0 0", "X 0 0 0", "C 0 0 0"));
}

TEST_F(OccurrencePathsTest, PathsThatLeadNowhereOrRoundAreTold)
{
    normaliseGraph("\n<Occurrence id='x' pathRefs='#gone #b'/>\n<Occurrence id='y' pathRefs='#z #b'/>"
                   "\n<Occurrence id='z' pathRefs='#y #b'/>\n<Occurrence id='s' pathRefs='#a #s'/>");
    ASSERT_EQ(m_result.facts.unplacedCount, 4u);
    EXPECT_EQ(m_result.facts.unplaced.front().path, QStringLiteral("#gone #b"));
    EXPECT_EQ(m_result.facts.unplaced.front().line, 2);
}

TEST_F(OccurrencePathsTest, PathsThatDoubleInEachOtherComeToAnEnd)
{
    std::string occurrences = "<Occurrence id='o0' pathRefs='#a'/>";
    for (int i = 1; i < 60; ++i) {
        const std::string before = "#o" + std::to_string(i - 1);
        occurrences += "<Occurrence id='o" + std::to_string(i) + "' pathRefs='#a " + before + " " + before + "'/>";
    }
    normaliseGraph(occurrences);
    EXPECT_EQ(m_result.facts.unplacedCount, 59u);
}

TEST_F(OccurrencePathsTest, InATreeTheOccurrenceThatAPathBeginsWithIsAbove)
{
    normalise("<ProductView rootRefs='a'><Occurrence id='a' name='A'/><Occurrence id='b' pathRefs='#a #i'>" +
              at("1 0 0") + "</Occurrence></ProductView><Instance id='i' name='I'/>");
    EXPECT_EQ(m_result.facts.treeFrom, QStringLiteral("occurrence tree"));
    EXPECT_THAT(places(), ElementsAre("A 0 0 0", "I 1 0 0"));
}

TEST_F(OccurrencePathsTest, OfSeveralForOnePlaceTheOthersAreTold)
{
    normaliseGraph("\n<Occurrence instanceRefs='#a #b' name='First'/>\n<Occurrence id='x' instanceRefs='#a #b' "
                   "name='Second'/>\n<Occurrence id='o' instanceRefs='#a' occurrenceRefs='y'/>\n<Occurrence id='y' "
                   "instanceRefs='#b'/>");
    EXPECT_THAT(places(), ElementsAre("A 0 0 0", "First 0 0 0", "C 0 0 0"));
    EXPECT_EQ(m_result.facts.repeatedCount, 2u);
    ASSERT_EQ(m_result.facts.repeated.size(), 2u);
    EXPECT_EQ(m_result.facts.repeated[0].line, 3);
    EXPECT_EQ(m_result.facts.repeated[0].id, QStringLiteral("x"));
    EXPECT_EQ(m_result.facts.repeated[1].path, QStringLiteral("#b"));
    EXPECT_THAT(m_result.facts.unplaced, IsEmpty());
}

} // namespace
