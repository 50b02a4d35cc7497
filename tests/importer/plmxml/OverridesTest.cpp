// Occurrences that put another part at their place of a graph.

#include "tests/importer/plmxml/NormaliserTest.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

class OverridesTest : public NormaliserTest
{
protected:
    OverridesTest()
    {
        for (const char* name : {"wheel.jt", "spare.jt", "data.jt"})
            make(name);
    }

    /// An axle stands twice, and has a wheel; a spare wheel and a trolley with a spare wheel stand nowhere.
    void normaliseGraph(const std::string& occurrences)
    {
        normalise("<ProductDef><InstanceGraph rootRefs='c'><Instance id='c' name='C' partRef='#car'/>"
                  "<Instance id='f' name='F' partRef='#axle'/><Instance id='r' name='R' partRef='#axle'/>"
                  "<Instance id='a' name='A' partRef='#wheel'/><Instance id='s' name='S' partRef='#spare'/>"
                  "</InstanceGraph><Part id='car' instanceRefs='f r'/><Part id='axle' instanceRefs='a'/>"
                  "<Part id='wheel' name='Wheel' type='solid' revisionRef='#w'><Representation format='JT' "
                  "location='wheel.jt'/></Part><Part id='spare' name='Spare' type='solid' revisionRef='#t'>"
                  "<Representation format='JT' location='spare.jt'/></Part><Part id='trolley' name='Trolley' "
                  "instanceRefs='s'/><ProductView>" +
                  occurrences +
                  "</ProductView></ProductDef><ProductRevision id='w' masterRef='#i'/><Product id='i'/>"
                  "<ProductRevision id='t'/><ProductRevision id='d' name='Data'><AssociatedDataSet dataSetRef='#ds'/>"
                  "</ProductRevision><DataSet id='ds' memberRefs='df'/><ExternalFile id='df' locationRef='data.jt'/>");
    }
};

TEST_F(OverridesTest, APartStandsInsteadOfThatOfTheInstance)
{
    for (const char* attribute :
         {"partRef='#spare'", "partRef='spare'", "instancedRef='#spare'", "instancedRef='#t'"}) {
        normaliseGraph(std::string("<Occurrence instanceRefs='#c #r #a' ") + attribute + "/>");
        EXPECT_EQ(m_result.way, Way::AsText);
        EXPECT_THAT(shapes(), ElementsAre("CFA Wheel wheel.jt", "CRA Spare spare.jt")) << attribute;
    }
}

TEST_F(OverridesTest, ThePartOrItsRevisionOrItemIsNoOther)
{
    for (const char* attribute :
         {"partRef='#wheel'", "instancedRef='#wheel'", "instancedRef='#w'", "instancedRef='#i'"}) {
        normaliseGraph(std::string("<Occurrence instanceRefs='#c #r #a' ") + attribute + "/>");
        EXPECT_THAT(shapes(), ElementsAre("CFA Wheel wheel.jt", "CRA Wheel wheel.jt")) << attribute;
        EXPECT_EQ(m_result.structure.placements.size(), 4u) << "nothing is written twice";
    }
}

TEST_F(OverridesTest, AnAssemblyBringsWhatIsInItAndOccurrencesSpeakOfThat)
{
    normaliseGraph("<Occurrence instanceRefs='#c #r #s' name='Moved'>" + at("7 0 0") +
                   "</Occurrence><Occurrence instanceRefs='#c #r' partRef='#trolley'/>"
                   "<Occurrence id='old' instanceRefs='#c #r #a' name='Gone'/>");
    EXPECT_THAT(shapes(), ElementsAre("CFA Wheel wheel.jt", "CRS Spare spare.jt"));
    EXPECT_THAT(places(), ElementsAre("C 0 0 0", "F 0 0 0", "A 0 0 0", "R 0 0 0", "Moved 7 0 0"));
    EXPECT_EQ(m_result.facts.unplacedCount, 1u) << "what was there is not there now";
}

TEST_F(OverridesTest, ARevisionThatNoPartIsOfShowsItsDataSets)
{
    normaliseGraph("<Occurrence instanceRefs='#c #r #a' instancedRef='#d'/>");
    EXPECT_THAT(shapes(), ElementsAre("CFA Wheel wheel.jt", "CRA Data data.jt"));
}

TEST_F(OverridesTest, AnElementOfAnotherDocumentIsOneToo)
{
    make("other.plmxml");
    normaliseGraph("<Occurrence instanceRefs='#c #r #a' name='Far' partRef='other.plmxml#x'/>");
    EXPECT_THAT(shapes(), ElementsAre("CFA Wheel wheel.jt", "CRA Far other.plmxml#x"));
}

TEST_F(OverridesTest, OneThatLeadsNowhereIsToldAndKeepsThePart)
{
    normaliseGraph("<Occurrence instanceRefs='#c #r #a' partRef='#gone'/>");
    EXPECT_THAT(shapes(), ElementsAre("CFA Wheel wheel.jt", "CRA Wheel wheel.jt"));
    ASSERT_EQ(m_result.facts.danglingCount, 1u);
    EXPECT_EQ(m_result.facts.dangling.front().target, QStringLiteral("#gone"));
}

TEST_F(OverridesTest, AnAssemblyThatIsAroundThePlaceComesInOnceMore)
{
    normaliseGraph("<Occurrence instanceRefs='#c #r #a' partRef='#axle'/>");
    EXPECT_THAT(shapes(), ElementsAre("CFA Wheel wheel.jt", "CRAA Wheel wheel.jt"));
    EXPECT_FALSE(m_result.facts.isCut);
}

} // namespace
