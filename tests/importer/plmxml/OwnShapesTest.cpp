// Occurrences that show something else than the part at their place.

#include "tests/importer/plmxml/NormaliserTest.h"

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace
{

class OwnShapesTest : public NormaliserTest
{
protected:
    OwnShapesTest()
    {
        for (const char* name : {"part.jt", "bent.jt", "other.jt"})
            make(name);
    }

    /// An axle stands twice, and has two wheels.
    void normaliseGraph(const std::string& occurrences, const std::string& more = {})
    {
        normalise("<ProductDef><InstanceGraph rootRefs='c'><Instance id='c' name='C' partRef='#car'/>"
                  "<Instance id='f' name='F' partRef='#axle'>" +
                  at("10 0 0") + "</Instance><Instance id='r' name='R' partRef='#axle'>" + at("20 0 0") +
                  "</Instance><Instance id='a' name='A' partRef='#wheel'>" + at("0 1 0") +
                  "</Instance><Instance id='b' name='B' partRef='#wheel'>" + at("0 2 0") +
                  "</Instance></InstanceGraph><Part id='car' name='Car' instanceRefs='f r'/><Part id='axle' "
                  "name='Axle' instanceRefs='a b'/><Part id='wheel' name='Wheel' type='solid'><Representation "
                  "format='JT' location='part.jt'/></Part><Representation id='bent' format='JT' location='bent.jt'/>"
                  "<Representation id='other' format='JT' location='other.jt'/>" +
                  more + "<ProductView>" + occurrences + "</ProductView></ProductDef>");
    }
};

TEST_F(OwnShapesTest, ThatOfAnOccurrenceShowsAtItsPlaceAlone)
{
    normaliseGraph("<Occurrence instanceRefs='#c #r #a' representationRefs='#bent'/>");
    EXPECT_EQ(m_result.way, Way::AsText);
    EXPECT_THAT(shapes(),
                ElementsAre("CFA Wheel part.jt", "CFB Wheel part.jt", "CRA Wheel bent.jt", "CRB Wheel part.jt"));
    EXPECT_THAT(places(),
                ElementsAre("C 0 0 0", "F 10 0 0", "A 10 1 0", "B 10 2 0", "R 20 0 0", "A 20 1 0", "B 20 2 0"));
    EXPECT_THAT(files(), ElementsAre("bent.jt 1", "part.jt 3"));
    EXPECT_EQ(m_result.facts.parts, 3u);
}

TEST_F(OwnShapesTest, SeveralShareTheWayToThem)
{
    normaliseGraph("<Occurrence instanceRefs='#c #r #a' representationRefs='#bent'/>"
                   "<Occurrence instanceRefs='#c #r #b' representationRefs='#other'/>"
                   "<Occurrence instanceRefs='#c #f #b' representationRefs='#other'/>");
    EXPECT_THAT(shapes(),
                ElementsAre("CFA Wheel part.jt", "CFB Wheel other.jt", "CRA Wheel bent.jt", "CRB Wheel other.jt"));
    EXPECT_EQ(m_result.structure.placements.size(), 5u + 6u);
}

TEST_F(OwnShapesTest, WhatElseIsSaidOfPlacesOnTheWayHolds)
{
    normaliseGraph("<Occurrence instanceRefs='#c #r' visible='false' name='Rear'/>"
                   "<Occurrence instanceRefs='#c #r #b' name='Last'>" +
                   at("0 7 0") +
                   "</Occurrence><Occurrence instanceRefs='#c #f #b' name='Front'/>"
                   "<Occurrence instanceRefs='#c #r #a' name='Bent' representationRefs='#bent'/>");
    EXPECT_THAT(places(), ElementsAre("C 0 0 0", "F 10 0 0", "A 10 1 0", "Front 10 2 0", "Rear 20 0 0", "Bent 20 1 0",
                                      "Last 20 7 0"));
    EXPECT_EQ(m_result.facts.hiddenLeaves, 2);
}

TEST_F(OwnShapesTest, TheirLocationIsChosenLikeThatOfAPart)
{
    normaliseGraph("<Occurrence instanceRefs='#c #r #a' representationRefs='#gone #step #bent'/>",
                   "<Representation id='step' format='STEP' location='a.stp'/>");
    EXPECT_THAT(shapes(), testing::Contains("CRA Wheel bent.jt"));
    EXPECT_EQ(m_result.facts.danglingCount, 1u);
    normaliseGraph("<Occurrence instanceRefs='#c #r #a' representationRefs='#gone'/>");
    EXPECT_THAT(shapes(), testing::Contains("CRA Wheel part.jt"));
}

TEST_F(OwnShapesTest, AnOccurrenceOfATreeHasThemToo)
{
    normalise("<ProductView rootRefs='o'><Occurrence id='o' name='O' instancedRef='#t' occurrenceRefs='a b c d'/>"
              "<Occurrence id='a' name='A' instancedRef='#r'/>"
              "<Occurrence id='b' name='B' instancedRef='#r' representationRefs='#bent'/>"
              "<Occurrence id='c' name='C' instancedRef='#r' representationRefs='#bent'/>"
              "<Occurrence id='d' name='D' instancedRef='#r' representationRefs='#other'/></ProductView>"
              "<ProductRevision id='t'/><ProductRevision id='r'><AssociatedDataSet dataSetRef='#s'/></ProductRevision>"
              "<DataSet id='s' memberRefs='f'/><ExternalFile id='f' locationRef='part.jt'/>"
              "<Representation id='bent' location='bent.jt'/><Representation id='other' location='other.jt'/>");
    EXPECT_THAT(shapes(), ElementsAre("OA r part.jt", "OB r bent.jt", "OC r bent.jt", "OD r other.jt"));
    EXPECT_EQ(m_result.structure.parts.size(), 4u) << "those with the same share a part";
    EXPECT_EQ(m_result.facts.parts, 2u);
}

TEST_F(OwnShapesTest, ManyOnesAreAsLinearAsFew)
{
    std::string instances, list, occurrences;
    for (int i = 0; i < 20000; ++i) {
        const std::string id = "n" + std::to_string(i);
        instances += "<Instance id='" + id + "' partRef='p'/>";
        list += " " + id;
        occurrences += "<Occurrence instanceRefs='top " + id + "' representationRefs='bent'/>";
    }
    normalise("<ProductDef><InstanceGraph rootRefs='top'><Instance id='top' partRef='t'/>" + instances +
              "</InstanceGraph><Part id='t' instanceRefs='" + list +
              "'/><Part id='p'/><Representation id='bent' "
              "format='JT' location='bent.jt'/><ProductView>" +
              occurrences + "</ProductView></ProductDef>");
    EXPECT_THAT(files(), ElementsAre("bent.jt 20000"));
}

TEST_F(OwnShapesTest, ASimplifiedShapeGivesWayToAnyOther)
{
    make("a.stp");
    const auto part = [this](const std::string& representations, const char* type) {
        normalise(
            "<ProductDef><InstanceGraph rootRefs='a'><Instance id='a' partRef='#p'/></InstanceGraph><Part id='p'" +
            std::string(type) + ">" + representations + "</Part></ProductDef>");
    };
    const std::string simplified = "<Representation type='simplified' format='JT' location='bent.jt'/>";
    part(simplified + "<Representation format='STEP' location='a.stp'/>", " type='solid'");
    EXPECT_THAT(files(), ElementsAre("a.stp 1", "bent.jt 0 another file was taken"));
    part("<Representation type='flat' format='JT' location='bent.jt'/><Representation format='JT' location='part.jt'/>",
         "");
    EXPECT_EQ(m_result.way, Way::AsText) << "the loader would show both";
    EXPECT_THAT(files(), ElementsAre("bent.jt 0 another file was taken", "part.jt 1"));
    part(simplified + "<Representation format='STEP' location='none.stp'/>", " type='solid'");
    EXPECT_THAT(files(), ElementsAre("bent.jt 1", "none.stp 0 missing"));
    part(simplified, " type='solid'");
    EXPECT_EQ(m_result.way, Way::AsItStands);
    EXPECT_THAT(files(), ElementsAre("bent.jt 1"));
}

TEST_F(OwnShapesTest, ARepresentationMayBeCalledLikeAReferenceSet)
{
    normalise("<ProductView rootRefs='o'><Occurrence id='o' partRef='#p'><UserData><UserValue title='UG REF SET' "
              "value='SOLID'/></UserData></Occurrence></ProductView><Part id='p'>"
              "<Representation type='user' name='SHELL' location='part.jt'/>"
              "<Representation name='SOLID' location='other.jt'/>"
              "<Representation type='user' name='SOLID' location='bent.jt'/></Part>");
    EXPECT_THAT(files(), testing::Contains("bent.jt 1"));
}

} // namespace
