// Which of several files of one part comes in.

#include "tests/importer/plmxml/NormaliserTest.h"

#include <algorithm>

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace
{

class NormaliserAlternativesTest : public NormaliserTest
{
protected:
    void normalisePart(const std::string& content, const char* attributes = "")
    {
        normalise("<ProductDef><InstanceGraph rootRefs='a'><Instance id='a' name='A' partRef='#p'/></InstanceGraph>"
                  "<Part id='p' name='P' " +
                  std::string(attributes) + ">" + content + "</Part></ProductDef>");
    }
    static std::string file(const char* id, const char* location)
    {
        return std::string("<ExternalFile id='") + id + "' format='JT' locationRef='" + location + "'/>";
    }
    void makeAll(std::initializer_list<const char*> names)
    {
        for (const char* name : names)
            make(name);
    }
};

TEST_F(NormaliserAlternativesTest, FormatsComeInTheirOrder)
{
    const std::vector<std::string> names = {"a.jt",  "b.plmxml", "c.stp", "d.igs", "e.obj",
                                            "f.glb", "g.ply",    "h.wrl", "i.stl"};
    for (std::size_t best = 0; best < names.size(); ++best) {
        std::string all;
        for (std::size_t i = names.size(); i-- > best;) {
            make(names[i].c_str());
            all += "<Representation location='" + names[i] + "'/>";
        }
        normalisePart(all, "type='solid'");
        EXPECT_THAT(files(), Contains(names[best] + " 1"));
        EXPECT_EQ(m_result.facts.shapePlaces, 1);
    }
}

TEST_F(NormaliserAlternativesTest, NativeFilesOfAllKnownFormatsAreToldWithoutReader)
{
    for (const char* format :
         {"XT",    "eXT",      "jXT",      "XPK",      "XGL",     "SAT",  "UGBkm",   "UGPrt",   "SEPrt",
          "SEAsm", "IdeasPrt", "IdeasAsm", "IdeasIDI", "Cat4Prt", "IDI",  "Cat5Prt", "Cat5Asm", "SWPrt",
          "SWAsm", "TX",       "DWG",      "DWF",      "DXF",     "ProE", "CGM",     "CGR"}) {
        normalisePart(std::string("<Representation format='") + format + "' location='a.native'/>", "type='assembly'");
        EXPECT_THAT(files(), ElementsAre("a.native 1")) << format << ": it is named where it is the only one";
    }
}

TEST_F(NormaliserAlternativesTest, VrmlIsWrl)
{
    makeAll({"a.wrl", "b.wrl", "a.stl"});
    normalisePart("<Representation format='STL' location='a.stl'/><Representation format='VRML' location='a.wrl'/>");
    EXPECT_THAT(files(), ElementsAre("a.stl 0 another file was taken", "a.wrl 1"));
    EXPECT_THAT(m_result.text, HasSubstr("format=\"WRL\""));
    normalisePart("<Representation><CompoundRep format='VRML' location='a.wrl'/><CompoundRep format='VRML' "
                  "location='b.wrl'/></Representation>");
    EXPECT_EQ(m_result.way, Way::AsText) << "the loader knows no such word";
    EXPECT_THAT(files(), ElementsAre("a.wrl 1", "b.wrl 1"));
}

TEST_F(NormaliserAlternativesTest, APartWithoutShapeMayHaveAnEmptyLocation)
{
    normalisePart("<Representation format='JT' location=''/>", "type='solid'");
    EXPECT_THAT(files(), IsEmpty());
    EXPECT_EQ(m_result.facts.leavesWithoutShape, 1);
    EXPECT_EQ(m_result.facts.leftOutCounts[QStringLiteral("no file")], 1u);
}

TEST_F(NormaliserAlternativesTest, OneFileMayBeSeveralPieces)
{
    makeAll({"a.jt", "b.stl"});
    normalisePart("<Representation format='JT'><CompoundRep location='a.jt'>" + at("1 0 0") +
                  "</CompoundRep><CompoundRep location='a.jt'>" + at("2 0 0") +
                  "</CompoundRep><CompoundRep format='STL' location='b.stl'/></Representation>");
    EXPECT_THAT(files(), ElementsAre("a.jt 2", "b.stl 1"));
    EXPECT_EQ(m_result.structure.parts[0].pieces.size(), 3u);
}

TEST_F(NormaliserAlternativesTest, AMissingPieceLeavesTheOthers)
{
    make("a.jt");
    normalisePart("<Representation><CompoundRep format='JT' location='a.jt'/><CompoundRep format='JT' "
                  "location='none.jt'/></Representation>",
                  "type='solid'");
    EXPECT_THAT(files(), ElementsAre("a.jt 1", "none.jt 1"));
}

TEST_F(NormaliserAlternativesTest, EquivalentRepresentationsStandForOneAnother)
{
    makeAll({"a.jt", "b.jt"});
    const std::string ring = "<Representation id='r' equivalentRef='s' format='JT' location='a.jt'/><Representation "
                             "id='s' equivalentRef='r' format='JT' location='b.jt'/>";
    normalisePart(ring, "type='assembly'");
    EXPECT_EQ(m_result.way, Way::AsText) << "the loader would show both";
    EXPECT_THAT(files(), ElementsAre("a.jt 1", "b.jt 0 another file was taken"));
}

TEST_F(NormaliserAlternativesTest, OfEquivalentPiecesTheBestComesIn)
{
    makeAll({"a.stl", "b.jt", "c.jt"});
    const auto piece = [](const char* id, const char* next, const char* format, const char* location) {
        return std::string("<CompoundRep id='") + id + "' equivalentRef='" + next + "' format='" + format +
               "' location='" + location + "'/>";
    };
    normalisePart("<Representation>" + piece("k", "l", "STL", "a.stl") + piece("c", "", "JT", "c.jt") +
                  piece("l", "m", "JT", "none.jt") + piece("m", "k", "JT", "b.jt") + "</Representation>");
    EXPECT_EQ(m_result.way, Way::AsText);
    EXPECT_THAT(files(), ElementsAre("a.stl 0 another file was taken", "b.jt 1", "c.jt 1", "none.jt 0 missing"));
    normalisePart("<Representation>" + piece("k", "l", "JT", "b.jt") + piece("l", "k", "JT", "c.jt") +
                      "</Representation>",
                  "type='assembly'");
    EXPECT_THAT(files(), ElementsAre("b.jt 1", "c.jt 0 another file was taken"));
    normalisePart("<Representation>" + piece("l", "", "JT", "b.jt") + piece("k", "l", "JT", "c.jt") +
                  piece("n", "n", "STL", "a.stl") + piece("o", "gone", "STL", "a.stl") + "</Representation>");
    EXPECT_THAT(files(), ElementsAre("a.stl 2", "b.jt 1", "c.jt 0 another file was taken"));
}

TEST_F(NormaliserAlternativesTest, TheReferenceSetMayStandAtTheInstanceAndLeavesOfOneShareAPart)
{
    makeAll({"SOLID$.jt", "SHELL$_XML2.jt"});
    const auto set = [](const char* name) {
        return std::string("<UserData type='InstanceNotes'><UserValue title='UG REF SET' value='") + name +
               "'/></UserData>";
    };
    normalise("<ProductView rootRefs='o'><Occurrence id='o' occurrenceRefs='a b c'/>"
              "<Occurrence id='a' instancedRef='#r' instanceRefs='#i'/><Occurrence id='b' instancedRef='#r'>" +
              set("SOLID") + "</Occurrence><Occurrence id='c' instancedRef='#r' instanceRefs='#i'/></ProductView>" +
              "<Instance id='i'>" + set("SHELL") +
              "</Instance><ProductRevision id='r' name='R'><AssociatedDataSet dataSetRef='#d'/></ProductRevision>"
              "<DataSet id='d' memberRefs='f g'/>" +
              file("f", "SOLID$.jt") + file("g", "SHELL$_XML2.jt"));
    EXPECT_THAT(files(), ElementsAre("SHELL$_XML2.jt 2", "SOLID$.jt 1"));
    EXPECT_EQ(m_result.structure.parts.size(), 3u) << "one for each set";
}

TEST_F(NormaliserAlternativesTest, OfSeveralDataSetsWithTheSameSetTheFirstCounts)
{
    makeAll({"x/SOLID$.jt", "y/SOLID$.jt"});
    normalise("<ProductView rootRefs='o'><Occurrence id='o' instancedRef='#r' associatedAttachmentRefs='#t'><UserData>"
              "<UserValue title='UG REF SET' value='SOLID'/></UserData></Occurrence><AssociatedAttachment id='t' "
              "attachmentRef='#d'/></ProductView><ProductRevision id='r' name='R'><AssociatedDataSet dataSetRef='#d' "
              "role='IMAN_Rendering'/><AssociatedDataSet dataSetRef='#e'/></ProductRevision><DataSet id='d' "
              "type='DirectModel' memberRefs='f'/><DataSet id='e' type='DirectModel' memberRefs='g'/>" +
              file("f", "x\\SOLID$.jt") + file("g", "y\\SOLID$.jt"));
    EXPECT_THAT(files(), ElementsAre("x/SOLID$.jt 1", "y/SOLID$.jt 0 another file was taken"))
        << "both ways to a file name it once";
}

TEST_F(NormaliserAlternativesTest, ASecondShapeAsAnInstanceOfItsOwnIsAPiece)
{
    makeAll({"a.jt", "b.jt"});
    normalise("<ProductDef><InstanceGraph rootRefs='t'><Instance id='t' partRef='#top'/><Instance id='a' partRef='#p'/>"
              "<Instance id='b' partRef='#q'/></InstanceGraph><Part id='top' instanceRefs='a b'/><Part id='p' "
              "type='solid'><Representation format='JT' location='a.jt'/></Part><Part id='q' type='solid'>"
              "<Representation format='JT' location='b.jt'/></Part></ProductDef>");
    EXPECT_THAT(files(), ElementsAre("a.jt 1", "b.jt 1"));
}

TEST_F(NormaliserAlternativesTest, TheDocumentNamesFoldersToLookIn)
{
    make("lib/steel tools/bolt.jt");
    make("car.plmxml", "<PLMXML referenceSearchPaths='none lib\\steel%20tools'><Part id='p'><Representation "
                       "format='JT' location='X:\\any\\Bolt.jt'/></Part></PLMXML>");
    m_result = importer::plmxml::normalise(path("car.plmxml"), {{}, {}, true});
    ASSERT_EQ(m_result.facts.files.size(), 1u);
    EXPECT_EQ(m_result.facts.files[0].found, path("lib/steel tools/bolt.jt"));
    EXPECT_EQ(m_result.facts.files[0].foundBy, QStringLiteral("search path"));
}

} // namespace
