// Which files a document's parts have.

#include "tests/importer/plmxml/NormaliserTest.h"

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

namespace
{

class NormaliserFilesTest : public NormaliserTest
{
protected:
    /// One part without type, placed once.
    const importer::plmxml::NormalisedDocument& normalisePart(const std::string& content, const char* attributes = "",
                                                              const QStringList& preferred = {})
    {
        return normalise("<ProductDef><InstanceGraph rootRefs='a'><Instance id='a' name='A' partRef='#p'/>"
                         "</InstanceGraph><Part id='p' name='P' " +
                             std::string(attributes) + ">" + content + "</Part></ProductDef>",
                         preferred);
    }
    /// Two occurrences of one revision with these files, the second with a reference set.
    const importer::plmxml::NormalisedDocument& normaliseRevision(const std::string& files, const char* set = "")
    {
        std::string references;
        for (int i = 0; i < 4; ++i)
            references += "#f" + std::to_string(i) + " ";
        return normalise("<ProductView rootRefs='a'><Occurrence id='a' occurrenceRefs='b'/><Occurrence id='b' "
                         "instancedRef='#r'><UserData><UserValue title='UG REF SET' value='" +
                         std::string(set) +
                         "'/></UserData></Occurrence></ProductView><ProductRevision id='r' name='R'>"
                         "<AssociatedDataSet dataSetRef='#d'/></ProductRevision><DataSet id='d' memberRefs='" +
                         references + "'/>" + files);
    }
    static std::string representation(const char* format, const char* location, const char* content = "")
    {
        return std::string("<Representation format='") + format + "' location='" + location + "'>" + content +
               "</Representation>";
    }
};

TEST_F(NormaliserFilesTest, OfAlternativesTheOneThatComesInBestIsTaken)
{
    make("a.stl");
    make("a.jt");
    normalisePart(representation("SEPrt", "a.par") + representation("STL", "a.stl") + representation("JT", "a.jt"),
                  "type='solid'");
    EXPECT_EQ(m_result.way, Way::AsText);
    EXPECT_THAT(files(), ElementsAre("a.jt 1", "a.par 0 no reader", "a.stl 0 another file was taken"));
}

TEST_F(NormaliserFilesTest, AMissingFileGivesWayToTheNext)
{
    make("a.stl");
    normalisePart(representation("JT", "a.jt") + representation("STL", "a.stl"));
    EXPECT_THAT(files(), ElementsAre("a.jt 0 missing", "a.stl 1"));
}

TEST_F(NormaliserFilesTest, TheBestIsNamedWhenAllAreMissing)
{
    normalisePart(representation("STL", "a.stl") + representation("JT", "sub\\a.jt"));
    EXPECT_THAT(files(), ElementsAre("a.stl 0 missing", "sub/a.jt 1"));
    EXPECT_EQ(describe(m_result.asked[path("sub/a.jt")]), QStringLiteral("line 1 names it \"sub\\a.jt\""));
}

TEST_F(NormaliserFilesTest, PreferredFormatsComeFirst)
{
    make("a.stp");
    make("a.jt");
    normalisePart(representation("JT", "a.jt") + representation("STEP", "a.stp"), "", {QStringLiteral("step")});
    EXPECT_THAT(files(), ElementsAre("a.jt 0 another file was taken", "a.stp 1"));
}

TEST_F(NormaliserFilesTest, CompoundRepresentationsAreAllTakenWhereTheyStand)
{
    make("a.jt");
    make("b.jt");
    normalisePart("<Representation id='r' format='JT'><CompoundRep name='One' location='a.jt'/><CompoundRep name='Two' "
                  "location='b.jt'>" +
                      at("1 2 3") + "</CompoundRep></Representation>",
                  "representationRefs='r'");
    EXPECT_THAT(files(), ElementsAre("a.jt 1", "b.jt 1"));
    EXPECT_EQ(m_result.facts.shapePlaces, 1);
    EXPECT_THAT(m_result.text,
                HasSubstr("name=\"Two\" partRef=\"#zn.s0.1\"><Transform>1 0 0 0 0 1 0 0 0 0 1 0 1 2 3 1"));
}

TEST_F(NormaliserFilesTest, AMovedRepresentationMovesTheShape)
{
    make("a.jt");
    normalisePart(representation("JT", "a.jt", at("0 0 9").c_str()), "type='solid'");
    EXPECT_EQ(m_result.way, Way::AsText);
    EXPECT_THAT(m_result.text, HasSubstr(" 0 0 9 1</Transform>"));
}

TEST_F(NormaliserFilesTest, AnAssemblyOfAGraphKeepsItsOwnFile)
{
    make("a.jt");
    make("b.jt");
    normalise("<ProductDef><InstanceGraph rootRefs='a'><Instance id='a' partRef='#p'/><Instance id='b' partRef='#q'/>"
              "</InstanceGraph><Part id='p' instanceRefs='b'><Representation format='jt' location='a.jt'/></Part><Part "
              "id='q'><Representation format='jt' location='b.jt'/></Part></ProductDef>");
    EXPECT_THAT(files(), ElementsAre("a.jt 1", "b.jt 1"));
}

TEST_F(NormaliserFilesTest, DataSetsOfRevisionsHoldFiles)
{
    make("car assy/None_XML2.jt");
    normaliseRevision("<ExternalFile id='f0' format='qaf' locationRef='a.qaf'/>"
                      "<ExternalFile id='f1' format='jt' locationRef='car%20assy\\None_XML2.jt'/>"
                      "<ExternalFile id='f2' format='prt' locationRef='a.prt'/><ExternalFile id='f3' locationRef=''/>");
    EXPECT_THAT(files(), ElementsAre("a.prt 0 no reader", "car assy/None_XML2.jt 1"));
    EXPECT_THAT(m_result.text, HasSubstr("car%20assy/None_XML2.jt"));
}

TEST_F(NormaliserFilesTest, AmongFilesOfOneFormatTheReferenceSetChooses)
{
    const std::string jts =
        "<ExternalFile id='f0' locationRef='x__A___$.jt'/><ExternalFile id='f1' "
        "locationRef='SOLIDS.jt'/><ExternalFile id='f2' locationRef='SOLID$_XML2.jt'/><ExternalFile "
        "id='f3' locationRef='SHELL$.jt'/>";
    for (const char* name : {"x__A___$.jt", "SOLIDS.jt", "SOLID$_XML2.jt", "SHELL$.jt"})
        make(name);
    normaliseRevision(jts, "SOLID");
    EXPECT_THAT(files(), testing::Contains("SOLID$_XML2.jt 1"));
    normaliseRevision(jts, "NONE");
    EXPECT_THAT(files(), testing::Contains("x__A___$.jt 1"));
}

TEST_F(NormaliserFilesTest, AttachmentsHoldFilesWhereNothingElseDoes)
{
    make("weld.jt");
    normalise("<ProductView rootRefs='a'><Occurrence id='a' occurrenceRefs='b c'/><Occurrence id='b' instancedRef='#r' "
              "associatedAttachmentRefs='#x'/><Occurrence id='c' instancedRef='#r'/><AssociatedAttachment id='x' "
              "childRefs='y x'/><AssociatedAttachment id='y' attachmentRef='#d'/></ProductView>"
              "<ConnectionRevision id='r' name='Weld'/><DataSet id='d' memberRefs='#f'/><ExternalFile id='f' "
              "locationRef='weld.jt'/>");
    EXPECT_THAT(files(), ElementsAre("weld.jt 1"));
    EXPECT_EQ(m_result.facts.leavesWithoutShape, 1);
}

TEST_F(NormaliserFilesTest, AnAssemblysOwnFileShowsWhereItsPartsHaveNone)
{
    const auto document = [](const char* child) {
        return std::string("<ProductView rootRefs='a'><Occurrence id='a' instancedRef='#r' occurrenceRefs='b'/>"
                           "<Occurrence id='b' instancedRef='") +
               child +
               "'/></ProductView><ProductRevision id='r'><AssociatedDataSet dataSetRef='#d'/></ProductRevision>"
               "<ProductRevision id='s'><AssociatedDataSet dataSetRef='#e'/></ProductRevision><ProductRevision id='t'/>"
               "<DataSet id='d' memberRefs='f'/><DataSet id='e' memberRefs='g'/><ExternalFile id='f' "
               "locationRef='whole.jt'/><ExternalFile id='g' locationRef='part.jt'/>";
    };
    make("whole.jt");
    make("part.jt");
    normalise(document("#s"));
    EXPECT_THAT(files(), ElementsAre("part.jt 1", "whole.jt 0 its part consists of others"));
    normalise(document("#t"));
    EXPECT_THAT(files(), ElementsAre("whole.jt 1"));
}

TEST_F(NormaliserFilesTest, PartsOfOtherDocumentsAreDocuments)
{
    make("axle.plmxml");
    normalise("<ProductDef><InstanceGraph rootRefs='a'><Instance id='a' name='A' partRef='axle.plmxml#id7'/>"
              "</InstanceGraph></ProductDef>");
    EXPECT_EQ(m_result.way, Way::AsText);
    EXPECT_THAT(files(), ElementsAre("axle.plmxml#id7 1"));
}

TEST_F(NormaliserFilesTest, WhatTheLoaderReadsRightIsLeftAsItIs)
{
    make("a b.jt");
    EXPECT_EQ(normalisePart(representation("JT", "a%20b.jt"), "type='solid'").way, Way::AsItStands);
    EXPECT_EQ(normalisePart(representation("JT", "./a b.jt")).way, Way::AsItStands);
    EXPECT_EQ(normalisePart(representation("JT", "none.jt")).way, Way::AsItStands);
    EXPECT_EQ(normalisePart(representation("JT", "A B.jt")).way, Way::AsText) << "letter case";
    EXPECT_EQ(normalisePart(representation("jt", "a b.jt")).way, Way::AsText) << "an assembly's formats";
    EXPECT_EQ(normalisePart(representation("JT", "x/../a b.jt")).way, Way::AsItStands);
    EXPECT_EQ(normalisePart(representation("JT", "/dev/zero"), "type='solid'").way, Way::AsText);
    EXPECT_THAT(m_result.text, Not(HasSubstr("\"/dev/zero\"")));
}

TEST_F(NormaliserFilesTest, ThatADocumentIsPlainIsSeenWithoutItsStructure)
{
    make("a.jt");
    const auto isFollowed = [this](const std::string& part) {
        normalisePart(part);
        return importer::plmxml::normalise(path("car.plmxml"), {}).isRead;
    };
    const std::string shape = representation("JT", "a.jt");
    EXPECT_FALSE(isFollowed(shape));
    EXPECT_EQ(m_result.way, Way::AsItStands);
    EXPECT_TRUE(isFollowed(shape + "<UserData><UserValue title='a' value='b'/></UserData>"));
    EXPECT_EQ(m_result.way, Way::AsItStands);
    EXPECT_TRUE(isFollowed(shape + "<Occurrence instanceRefs='#a'/>"));
    EXPECT_TRUE(isFollowed(representation("JT", "A.jt")));
    EXPECT_TRUE(isFollowed(""));
}

TEST_F(NormaliserFilesTest, NothingThatHasToBeFollowedElsewhereIsLeft)
{
    make("a.jt");
    const std::string shape = representation("JT", "a.jt");
    EXPECT_EQ(normalisePart(shape, "representationRefs=''").way, Way::AsItStands);
    EXPECT_EQ(normalisePart(shape, "revisionRef='#r'").way, Way::AsText);
    EXPECT_EQ(normalisePart(shape + shape, "type='solid'").way, Way::AsText);
    EXPECT_EQ(normalisePart(shape + "<Occurrence instanceRefs='#a' visible='false'/>").way, Way::AsText);
    EXPECT_EQ(normalisePart(shape + "<Occurrence instanceRefs='#a' name='Other'/>").way, Way::AsText);
    EXPECT_EQ(normalisePart("<Representation id='r' format='JT' location='a.jt'/>", "representationRefs='r'").way,
              Way::AsText);
}

} // namespace
