#include "tests/importer/plmxml/NormaliserTest.h"

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

namespace
{

class LeftOutShapesTest : public NormaliserTest
{
protected:
    /// A part "p" of this type, placed once; the representations begin in line 4.
    static std::string partOf(const std::string& type, const std::string& representations)
    {
        return "<ProductDef><InstanceGraph rootRefs='a'>\n<Instance id='a' partRef='#p'/>\n<Part id='p' name='P' "
               "type='" +
               type + "'>\n" + representations + "</Part></InstanceGraph></ProductDef>";
    }
    static std::string representation(const char* id, const char* format, const char* location)
    {
        return std::string("<Representation id='") + id + "' format='" + format + "' location='" + location + "'/>\n";
    }

    /// "line element id of part: why" of each.
    std::vector<std::string> leftOut() const
    {
        std::vector<std::string> texts;
        for (const zn::LeftOutShape& shape : m_result.facts.leftOut)
            texts.push_back(QStringLiteral("%1 %2 %3 of %4: %5")
                                .arg(shape.line)
                                .arg(shape.element, shape.id, shape.part, shape.whyNot)
                                .toStdString());
        return texts;
    }
};

TEST_F(LeftOutShapesTest, ASolidPartShowsOneOfItsRepresentations)
{
    make("a.jt");
    make("b.jt");
    normalise(partOf("solid", representation("r1", "JT", "a.jt") + representation("r2", "JT", "b.jt")));
    EXPECT_THAT(leftOut(), ElementsAre("5 Representation r2 of p: another file was taken"));
    EXPECT_THAT(m_result.facts.leftOutCounts, ElementsAre(Pair(QStringLiteral("another file was taken"), 1u)));
    EXPECT_EQ(m_result.facts.leftOut[0].written, QStringLiteral("b.jt"));
    EXPECT_EQ(m_result.facts.leftOut[0].format, QStringLiteral("JT"));
}

TEST_F(LeftOutShapesTest, EachHasItsReason)
{
    make("a.jt");
    normalise(partOf("solid", representation("r1", "JT", "a.jt") + representation("r2", "Clay", "a.clay") +
                                  representation("r3", "SEPrt", "a.par") + representation("r4", "JT", "none.jt") +
                                  representation("r5", "JT", "")));
    EXPECT_THAT(leftOut(),
                ElementsAre("5 Representation r2 of p: unknown format", "6 Representation r3 of p: no reader",
                            "7 Representation r4 of p: missing", "8 Representation r5 of p: no file"));
}

TEST_F(LeftOutShapesTest, PiecesOfACompoundAreNamedEach)
{
    make("a.jt");
    make("c.jt");
    normalise(partOf("solid", "<Representation id='r'><CompoundRep id='c1' format='JT' location='a.jt'/>\n"
                              "<CompoundRep id='c2'>\n<CompoundRep id='c3' format='Clay' location='b.clay'/>\n"
                              "<CompoundRep id='c4' format='JT' location='c.jt'/></CompoundRep></Representation>"));
    EXPECT_THAT(leftOut(), ElementsAre("6 CompoundRep c3 of p: unknown format"));
}

TEST_F(LeftOutShapesTest, PartsOfTypesWithoutGeometryShowNothing)
{
    for (const char* type : {"wire", "sheet", "minimal", "general"}) {
        SCOPED_TRACE(type);
        make("a.jt");
        normalise(partOf(type, representation("r1", "JT", "a.jt")));
        EXPECT_EQ(m_result.way, Way::AsItStands);
        EXPECT_THAT(leftOut(), ElementsAre("4 Representation r1 of p: type without geometry"));
        EXPECT_THAT(files(), ElementsAre("a.jt 0 type without geometry"));
        EXPECT_EQ(m_result.facts.shapePlaces, 0);
        EXPECT_EQ(m_result.facts.leavesWithoutShape, 1);
    }
}

TEST_F(LeftOutShapesTest, TypesWithoutGeometryAreSeenWhenNobodyAsksForFacts)
{
    make("a.jt");
    make("car.plmxml",
         QByteArray::fromStdString("<PLMXML>" + partOf("wire", representation("r1", "JT", "a.jt")) + "</PLMXML>"));
    m_result = importer::plmxml::normalise(path("car.plmxml"), {});
    EXPECT_THAT(leftOut(), ElementsAre("4 Representation r1 of p: type without geometry"));
}

TEST_F(LeftOutShapesTest, AnAssemblyTakesAllOfItsRepresentations)
{
    make("a.jt");
    make("b.jt");
    normalise(partOf("assembly", representation("r1", "JT", "a.jt") + representation("r2", "JT", "b.jt")));
    EXPECT_EQ(m_result.way, Way::AsItStands);
    EXPECT_THAT(leftOut(), IsEmpty());
}

TEST_F(LeftOutShapesTest, ATypeThatNobodyKnowsIsThatOfAnAssembly)
{
    make("a.stl");
    normalise(partOf("lattice", representation("r1", "STL", "a.stl")));
    EXPECT_EQ(m_result.way, Way::AsText) << "the loader takes no STL for an assembly";
    EXPECT_THAT(leftOut(), IsEmpty());
    EXPECT_THAT(files(), ElementsAre("a.stl 1"));
}

TEST_F(LeftOutShapesTest, AnAssemblyWhoseOccurrencesHaveShapesShowsThem)
{
    make("whole.jt");
    make("leaf.jt");
    normalise("<ProductView rootRefs='o'><Occurrence id='o' partRef='#p' occurrenceRefs='u'/>"
              "<Occurrence id='u' partRef='#q'/></ProductView><Part id='p'>" +
              representation("r1", "JT", "whole.jt") + "</Part><Part id='q'>" + representation("r2", "JT", "leaf.jt") +
              "</Part>");
    EXPECT_THAT(leftOut(), ElementsAre("1 Representation r1 of p: its part consists of others"));
}

TEST_F(LeftOutShapesTest, RepresentationsOfPartsThatStandNowhereAreNotAsked)
{
    make("a.jt");
    normalise("<ProductDef><InstanceGraph rootRefs='a'><Instance id='a' partRef='#p'/><Part id='p' type='solid'>" +
              representation("r1", "JT", "a.jt") + "</Part><Part id='q' type='solid'>" +
              representation("r2", "JT", "a.jt") + representation("r3", "JT", "b.jt") +
              "</Part></InstanceGraph></ProductDef>");
    EXPECT_THAT(leftOut(), IsEmpty());
}

TEST_F(LeftOutShapesTest, AllAreCountedAndTheFirstKept)
{
    make("a.jt");
    std::string many;
    for (std::size_t i = 0; i < zn::LeftOutShape::maxKept + 5; ++i)
        many += "<Representation format='Clay' location='a.clay'/>";
    normalise(partOf("solid", representation("r1", "JT", "a.jt") + many));
    EXPECT_EQ(m_result.facts.leftOut.size(), zn::LeftOutShape::maxKept);
    EXPECT_THAT(m_result.facts.leftOutCounts,
                ElementsAre(Pair(QStringLiteral("unknown format"), zn::LeftOutShape::maxKept + 5)));
}

} // namespace
