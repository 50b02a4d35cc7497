// Which structure a document has.

#include "tests/importer/plmxml/NormaliserTest.h"

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace
{

class NormaliserTreeTest : public NormaliserTest
{
protected:
    /// A tree of occurrences whose transforms lead to the top; the sub-assembly is turned by a quarter round z.
    static std::string occurrenceTree(const std::string& more = {})
    {
        return "<ProductView id='v' rootRefs='o1'>"
               "<Occurrence id='o1' instancedRef='#r1' occurrenceRefs='o2 o4'/>"
               "<Occurrence id='o2' instancedRef='#r2' parentRef='#o1' occurrenceRefs='o3'>"
               "<Transform>0 1 0 0 -1 0 0 0 0 0 1 0 10 0 0 1</Transform></Occurrence>"
               "<Occurrence id='o3' instancedRef='#r3' parentRef='#o2' instanceRefs='#i3'>"
               "<Transform>0 1 0 0 -1 0 0 0 0 0 1 0 10 2 0 1</Transform></Occurrence>"
               "<Occurrence id='o4' instancedRef='#r3' parentRef='#o1'>" +
               at("1 2 3") +
               "</Occurrence></ProductView>"
               "<ProductRevision id='r1' name='Car' masterRef='#p1' revision='A'/>"
               "<ProductRevision id='r2' name='Axle'/><ProductRevision id='r3' name='Wheel'/>"
               "<Product id='p1' productId='000123'/>"
               "<ProductDef><InstanceGraph><ProductInstance id='i3' partRef='#v3'>" +
               at("2 0 0") +
               "</ProductInstance></InstanceGraph></ProductDef>"
               "<ProductRevisionView id='v3'/>" +
               more;
    }
    static std::string graph(const std::string& instances, const std::string& parts, const std::string& more = {})
    {
        return "<ProductDef><InstanceGraph rootRefs='a'>" + instances + "</InstanceGraph>" + parts + more +
               "</ProductDef>";
    }
};

TEST_F(NormaliserTreeTest, OccurrencesAreTheTreeWhereTheGraphHasNoRoots)
{
    normalise(occurrenceTree());
    EXPECT_EQ(m_result.way, Way::AsText);
    EXPECT_EQ(m_result.facts.treeFrom, QStringLiteral("occurrence tree"));
    EXPECT_THAT(places(), ElementsAre("Car 0 0 0", "Axle 10 0 0", "Wheel 10 2 0", "Wheel 1 2 3"));
    EXPECT_EQ(m_result.facts.parts, 3u);
    EXPECT_EQ(m_result.facts.leaves, 2);
}

TEST_F(NormaliserTreeTest, TransformsOfOccurrencesLeadToTheTop)
{
    normalise(occurrenceTree());
    const importer::plmxml::Matrix4 moved = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 2, 0, 0, 1};
    EXPECT_EQ(m_result.structure.placements[3].name, "Wheel");
    EXPECT_EQ(m_result.structure.placements[3].placed, moved) << "that of the instance is exact";
}

TEST_F(NormaliserTreeTest, LeavesOfOneRevisionShareAPart)
{
    normalise(occurrenceTree());
    EXPECT_EQ(m_result.structure.parts.size(), 3u);
}

TEST_F(NormaliserTreeTest, AnOccurrenceWithoutTransformStandsByItsInstance)
{
    normalise("<ProductView rootRefs='a'><Occurrence id='a' name='A' occurrenceRefs='b'>" + at("5 0 0") +
              "</Occurrence><Occurrence id='b' name='B' instanceRefs='#i'/></ProductView><Instance id='i'>" +
              at("0 7 0") + "</Instance>");
    EXPECT_THAT(places(), ElementsAre("A 5 0 0", "B 5 7 0"));
}

TEST_F(NormaliserTreeTest, OccurrencesThatOnlyNameTheirParentStandBelowIt)
{
    normalise("<ProductView primaryOccurrenceRef='a'><Occurrence id='b' name='B' parentRef='#a'/>"
              "<Occurrence id='a' name='A'><Occurrence id='c' name='C'/></Occurrence></ProductView>");
    EXPECT_THAT(places(), ElementsAre("A 0 0 0", "C 0 0 0", "B 0 0 0"));
}

TEST_F(NormaliserTreeTest, OccurrencesInARingStandOnce)
{
    normalise("<ProductView rootRefs='a'><Occurrence id='a' name='A' occurrenceRefs='b b'/>"
              "<Occurrence id='b' name='B' occurrenceRefs='a'/></ProductView>");
    EXPECT_THAT(places(), ElementsAre("A 0 0 0", "B 0 0 0"));
    EXPECT_EQ(m_result.facts.placedTwice, 2u);
}

TEST_F(NormaliserTreeTest, InstancesWithoutGraphStandByThemselves)
{
    normalise("<Instance id='a' partRef='p'/><Part id='p' name='P' instanceRefs='b'/><Instance id='b' name='B' "
              "partRef='#q'/><Part id='q' name='Q'/><Part id='alone' name='Alone'/>");
    EXPECT_EQ(m_result.facts.treeFrom, QStringLiteral("flat"));
    EXPECT_THAT(places(), ElementsAre("P 0 0 0", "B 0 0 0", "Alone 0 0 0"));
    EXPECT_EQ(m_result.facts.roots, 2u);
}

TEST_F(NormaliserTreeTest, OccurrencesOfAWholeGraphAreNamesAndSwitches)
{
    normalise(graph("<Instance id='a' partRef='p'/><Instance id='b' partRef='#q'/>",
                    "<Part id='p' name='P' instanceRefs='b'/><Part id='q' name='Q'/>",
                    "<ProductView primaryOccurrenceRef='o'><Occurrence id='o' instanceRefs='#a' occurrenceRefs='u'/>"
                    "<Occurrence id='u' name='Hub' instanceRefs='#b' visible='false'/></ProductView>"));
    EXPECT_EQ(m_result.facts.treeFrom, QStringLiteral("instance graph"));
    EXPECT_EQ(m_result.way, Way::AsText);
    EXPECT_THAT(places(), ElementsAre("P 0 0 0", "Hub 0 0 0"));
    EXPECT_EQ(m_result.facts.hiddenLeaves, 1);
}

TEST_F(NormaliserTreeTest, OverridesAreLocalUnlessTheyProveOtherwise)
{
    const std::string instances = "<Instance id='a' partRef='p'>" + at("10 0 0") +
                                  "</Instance><Instance id='b' partRef='#q'>" + at("0 5 0") +
                                  "</Instance><Instance id='c' partRef='#q'>" + at("0 6 0") + "</Instance>";
    const std::string parts = "<Part id='p' name='P' instanceRefs='b c'/><Part id='q' name='Q'/>";
    const std::string moved = "<Occurrence id='1' instanceRefs='#a #b'>" + at("3 3 3") + "</Occurrence>";
    normalise(graph(instances, parts, "<ProductView>" + moved + "</ProductView>"));
    EXPECT_EQ(m_result.way, Way::AsItStands);
    EXPECT_THAT(places(), ElementsAre("P 10 0 0", "Q 13 3 3", "Q 10 6 0"));
    const std::string proof = "<Occurrence id='2' instanceRefs='#a #c'>" + at("10 6 0") + "</Occurrence>";
    normalise(graph(instances, parts, "<ProductView>" + moved + proof + "</ProductView>"));
    EXPECT_EQ(m_result.way, Way::AsText);
    EXPECT_THAT(places(), ElementsAre("P 10 0 0", "Q 3 3 3", "Q 10 6 0"));
}

TEST_F(NormaliserTreeTest, OneOfSeveralViewsCounts)
{
    const auto view = [](const char* name, const char* attributes) {
        return std::string("<ProductView name='") + name + "' " + attributes + "><Occurrence name='" + name +
               "'/></ProductView>";
    };
    normalise("<ProductView name='empty'/>" + view("one", "") + view("two", ""));
    EXPECT_THAT(places(), ElementsAre("one 0 0 0"));
    EXPECT_EQ(m_result.facts.otherViews, (QStringList{QStringLiteral("empty"), QStringLiteral("two")}));
    normalise(view("one", "") + view("two", "default='true'"));
    EXPECT_THAT(places(), ElementsAre("two 0 0 0"));
    normalise(view("one", "default='true'") + view("two", "state='active'"));
    EXPECT_THAT(places(), ElementsAre("two 0 0 0"));
    normalise(view("one", "id='w'") + view("two", "") + "<ProductDef defaultProductViewRef='#w'/>");
    EXPECT_THAT(places(), ElementsAre("one 0 0 0"));
}

TEST_F(NormaliserTreeTest, AGraphOutsideTheFirstDefinitionCounts)
{
    normalise("<ProductDef/><ProductDef><InstanceGraph rootInstanceRef='#a'><Instance id='a' name='A' partRef='#p'/>"
              "</InstanceGraph></ProductDef><Part id='p' name='P'/>");
    EXPECT_EQ(m_result.way, Way::AsText);
    EXPECT_THAT(places(), ElementsAre("A 0 0 0"));
}

TEST_F(NormaliserTreeTest, PrefixesOfTheNamespaceAreDroppedAndForeignElementsSkipped)
{
    make("car.plmxml", "<p:PLMXML xmlns:p='http://www.plmxml.org/Schemas/PLMXMLSchema' xmlns:f='urn:f'><p:ProductDef>"
                       "<p:InstanceGraph rootRefs='a'><p:Instance id='a' name='A'/><f:Instance id='b'/>"
                       "<f:Group><p:Instance id='c'/></f:Group></p:InstanceGraph></p:ProductDef></p:PLMXML>");
    m_result = importer::plmxml::normalise(path("car.plmxml"), {{}, {}, true});
    EXPECT_THAT(places(), ElementsAre("A 0 0 0"));
    EXPECT_EQ(m_result.facts.instances, 1u);
}

TEST_F(NormaliserTreeTest, LengthsMayBeThoseOfThePartFiles)
{
    normalise("<ProductDef><UserData><UserValue title='__TC-VIS_NO_UNITS' value='true'/></UserData><InstanceGraph "
              "rootRefs='a'><Instance id='a' name='A'>" +
              at("4000 250.5 0") + "</Instance></InstanceGraph></ProductDef>");
    EXPECT_TRUE(m_result.facts.hasNoUnits);
    EXPECT_THAT(m_result.text, HasSubstr("<Transform>1 0 0 0 0 1 0 0 0 0 1 0 4 0.2505 0 1</Transform>"));
}

TEST_F(NormaliserTreeTest, OfElementsWithOneIdTheFirstCounts)
{
    normalise(graph("<Instance id='a' name='A' visible='x'/><Instance id='a' name='B'/>", "", "<Instance/>"));
    EXPECT_THAT(places(), ElementsAre("A 0 0 0"));
    EXPECT_EQ(m_result.facts.duplicateIds, 1u);
}

TEST_F(NormaliserTreeTest, ADocumentThatPlacesNothingIsRefused)
{
    EXPECT_EQ(normalise("<Header/>").way, Way::Refuse);
    EXPECT_EQ(m_result.refusal.why, importer::plmxml::Refusal::Why::NoPlace);
    EXPECT_EQ(normalise("<ProductDef><InstanceGraph rootRefs='gone'/></ProductDef>").way, Way::Refuse);
    EXPECT_EQ(m_result.facts.danglingCount, 0u) << "nothing was looked up";
}

TEST_F(NormaliserTreeTest, WhatIsNoDocumentIsLeftToTheLoader)
{
    make("car.plmxml", "<PLMXML><Open></PLMXML>");
    m_result = importer::plmxml::normalise(path("car.plmxml"), {{}, {}, true});
    EXPECT_EQ(m_result.way, Way::AsItStands);
    EXPECT_FALSE(m_result.isRead);
}

TEST_F(NormaliserTreeTest, ShapesInsideTheDocumentAndViewsThatChooseAreTold)
{
    normalise(graph("<Instance id='a' name='A' partRef='#p'/><Instance id='b' name='B'/>",
                    "<Part id='p' instanceRefs='b'><Representation><InternalRep/></Representation></Part>",
                    "<ProductView definition='select'><Occurrence instanceRefs='#a'/></ProductView>"));
    EXPECT_EQ(m_result.facts.internalShapes, 1u);
    EXPECT_TRUE(m_result.facts.isSelection);
    normalise(graph("<Instance id='a' name='A' partRef='#p'/><Instance id='b' name='B'/>",
                    "<Part id='p' instanceRefs='b'/>", "<ProductView definition='configured'/>"));
    EXPECT_EQ(m_result.facts.internalShapes, 0u);
    EXPECT_FALSE(m_result.facts.isSelection);
}

TEST_F(NormaliserTreeTest, NamesComeFromTheNearestThatHasOne)
{
    normalise(occurrenceTree("<Occurrence/>"));
    normalise(
        "<ProductView rootRefs='a'><Occurrence id='a' occurrenceRefs='b c d e'/>"
        "<Occurrence id='b' instancedRef='#r'><UserData><UserValue value='Left' title='OccurrenceName'/></UserData>"
        "</Occurrence><Occurrence id='c' instancedRef='#r' instanceRefs='#i'/>"
        "<Occurrence id='d' instancedRef='#r'/><Occurrence id='e' instancedRef='#s'/></ProductView>"
        "<Instance id='i' name='Inst'/><ProductRevision id='r' name='Rev'/>"
        "<DesignRevision id='s' masterRef='#d1'/><Design id='d1' catalogueId='C-7'/>");
    EXPECT_THAT(places(), ElementsAre("a 0 0 0", "Left 0 0 0", "Inst 0 0 0", "Rev 0 0 0", "C-7 0 0 0"));
}

TEST_F(NormaliserTreeTest, WhatIsSaidOfThingsBecomesTagsAndTheFirstOfATitleCounts)
{
    normalise(
        "<ProductView rootRefs='a'><Occurrence id='a' instancedRef='#r' instanceRefs='#i'><UserData><UserValue "
        "title='Pos' value='10'/><UserValue title='Empty' value=''/></UserData></Occurrence></ProductView>"
        "<Instance id='i' quantity='4'><UserData><UserValue title='Pos' value='20'/></UserData></Instance>"
        "<ProductRevision id='r' name='R' revision='B' masterRef='#p'><UserData type='Hidden_Metadata'><UserValue "
        "title='Secret' value='1'/></UserData><UserData><UserValue title='owner' type='reference' value='' "
        "dataRef='#u'/></UserData><AssociatedForm formRef='#f'/></ProductRevision>"
        "<Product id='p' productId='0815'><Description>Big</Description></Product><User id='u' name='Ann'/>"
        "<Form id='f' name='Master'><UserData><UserValue title='mass' value='7'/></UserData></Form>");
    ASSERT_EQ(m_result.structure.placements.size(), 1u);
    EXPECT_THAT(m_result.structure.placements[0].tags,
                ElementsAre("ptx::attribute::Pos=10", "ptx::attribute::quantity=4"));
    EXPECT_THAT(m_result.structure.parts[0].tags,
                ElementsAre("ptx::attribute::owner=Ann", "ptx::attribute::revision=B", "ptx::attribute::productId=0815",
                            "ptx::attribute::Description=Big", "ptx::attribute::Master: mass=7"));
}

} // namespace
