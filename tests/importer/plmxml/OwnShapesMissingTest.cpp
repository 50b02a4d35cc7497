// Shapes that are named and not there: the next one that shows the same stands in.

#include "tests/importer/plmxml/NormaliserTest.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

class OwnShapesMissingTest : public NormaliserTest
{
protected:
    OwnShapesMissingTest() { make("part.jt"); }

    void normaliseGraph(const std::string& occurrence, const std::string& ofPart)
    {
        normalise("<ProductDef><InstanceGraph rootRefs='t'><Instance id='t' partRef='#top'/>"
                  "<Instance id='a' name='A' partRef='#p'/></InstanceGraph><Part id='top' instanceRefs='a'/>"
                  "<Part id='p' name='P' type='solid'>" +
                  ofPart + "</Part><ProductView>\n" + occurrence + "</ProductView></ProductDef>");
    }

    void normaliseTree(const std::string& occurrence, const std::string& dataSet, const std::string& more = {})
    {
        make("attached.jt");
        normalise("<ProductView rootRefs='o'><Occurrence id='o' instancedRef='#r' " + occurrence +
                  "</ProductView><ProductRevision id='r' name='R'><AssociatedDataSet dataSetRef='#s'/>"
                  "</ProductRevision><DataSet id='s' memberRefs='f'/><ExternalFile id='f' locationRef='" +
                  dataSet + "'/>" + more);
    }
};

constexpr const char* Shown = "<Representation format='JT' location='part.jt'/>";
constexpr const char* Gone = "<Representation id='g' format='JT' location='none.jt'/>";

TEST_F(OwnShapesMissingTest, ThatOfThePartStandsInForThatOfAnOccurrence)
{
    normaliseGraph(std::string("<Occurrence instanceRefs='#t #a'>") + Gone + "</Occurrence>", Shown);
    EXPECT_THAT(files(), ElementsAre("none.jt 0 missing", "part.jt 1"));
    ASSERT_EQ(m_result.facts.leftOut.size(), 1u) << "it is told";
    EXPECT_EQ(m_result.facts.leftOut.front().whyNot, QStringLiteral("missing"));
    EXPECT_EQ(m_result.facts.leftOut.front().id, QStringLiteral("g"));
    EXPECT_EQ(m_result.facts.leftOut.front().line, 2);
}

TEST_F(OwnShapesMissingTest, ThatOfTheOccurrenceIsNamedWhereThePartHasNoneEither)
{
    normaliseGraph(std::string("<Occurrence instanceRefs='#t #a'>") + Gone + "</Occurrence>",
                   "<Representation format='JT' location='other.jt'/>");
    EXPECT_THAT(files(), ElementsAre("none.jt 1", "other.jt 0 missing"));
}

TEST_F(OwnShapesMissingTest, ThatOfAPartThatAnOccurrencePutsThereStandsIn)
{
    make("q.jt");
    normaliseGraph(std::string("<Occurrence instanceRefs='#t #a' partRef='#q'>") + Gone +
                       "</Occurrence><Part id='q' type='solid'><Representation format='JT' location='q.jt'/></Part>",
                   Shown);
    EXPECT_THAT(files(), ElementsAre("none.jt 0 missing", "part.jt 0 another file was taken", "q.jt 1"));
}

TEST_F(OwnShapesMissingTest, TheDataSetStandsInInATree)
{
    normaliseTree(std::string(">") + Gone + "</Occurrence>", "part.jt");
    EXPECT_THAT(files(), ElementsAre("none.jt 0 missing", "part.jt 1"));
    EXPECT_EQ(m_result.facts.leftOutCounts[QStringLiteral("missing")], 1u);
}

TEST_F(OwnShapesMissingTest, WhatIsAttachedStandsInForAMissingDataSet)
{
    const std::string attached = "<AssociatedAttachment id='t' attachmentRef='#d'/><DataSet id='d' memberRefs='e'/>"
                                 "<ExternalFile id='e' locationRef='attached.jt'/>";
    normaliseTree("associatedAttachmentRefs='#t'/>", "none.jt", attached);
    EXPECT_THAT(files(), ElementsAre("attached.jt 1", "none.jt 0 missing"));
    normaliseTree("associatedAttachmentRefs='#t'/>", "part.jt", attached);
    EXPECT_THAT(files(), ElementsAre("part.jt 1")) << "nobody asked for more";
}

TEST_F(OwnShapesMissingTest, TheDataSetOfARevisionStandsInForItsRepresentation)
{
    make("set.jt");
    normalise("<ProductDef><InstanceGraph rootRefs='a'><Instance id='a' partRef='#p'/></InstanceGraph><Part id='p' "
              "revisionRef='#r'><Representation format='STEP' location='none.stp'/></Part></ProductDef>"
              "<ProductRevision id='r'><AssociatedDataSet dataSetRef='#s'/></ProductRevision>"
              "<DataSet id='s' memberRefs='f'/><ExternalFile id='f' locationRef='set.jt'/>");
    EXPECT_THAT(files(), ElementsAre("none.stp 0 missing", "set.jt 1"));
}

} // namespace
