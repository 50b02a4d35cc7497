// Documents that refer to themselves, or that grow beyond all bounds.

#include "tests/cad/visualization/PLMXMLStructureTest.h"

#include <functional>
#include <sstream>

namespace HB::Visualization
{

namespace
{

using testing::ElementsAre;
using testing::HasSubstr;

class WalkLimitsTest : public PLMXMLStructureTest
{
protected:
    /// Expects that no scene is built, and gives the line in the log.
    std::string failureOf(const std::string& content)
    {
        build(content);
        EXPECT_FALSE(m_tree);
        EXPECT_EQ(m_structure->getNodeCount(), 0U);
        EXPECT_EQ(m_log.size(), 1U);
        return m_log.empty() ? "" : m_log.front();
    }
    std::string inDocument(const std::string& text) const { return "'" + folder() + "doc.plmxml' " + text; }

    /// Parts p0 to p`levels`-1, each with one instance of the next.
    static std::string chain(unsigned levels)
    {
        std::ostringstream text;
        text << "<InstanceGraph rootRefs='p0'>";
        for (unsigned i = 1; i < levels; ++i)
            text << "<Instance id='i" << i << "' partRef='p" << i << "'/>";
        text << "</InstanceGraph>";
        for (unsigned i = 0; i < levels; ++i)
            text << "<Part id='p" << i << "' instanceRefs='i" << i + 1 << "'/>";
        return text.str();
    }
    /// Parts p0 to p`levels`-1, each with `width` instances of the next.
    static std::string bush(unsigned levels, unsigned width)
    {
        std::ostringstream text;
        text << "<InstanceGraph rootRefs='p0'>";
        for (unsigned i = 1; i < levels; ++i)
            text << "<Instance id='i" << i << "' partRef='p" << i << "'/>";
        text << "</InstanceGraph>";
        for (unsigned i = 0; i < levels; ++i) {
            text << "<Part id='p" << i << "' instanceRefs='";
            for (unsigned k = 0; k < width; ++k)
                text << "i" << i + 1 << ' ';
            text << "'/>";
        }
        return text.str();
    }
};

TEST_F(WalkLimitsTest, LimitsAreAThousandLevelsAndTwentyMillionRecords)
{
    EXPECT_EQ(CADWalkLimits().depth, 1000U);
    EXPECT_EQ(CADWalkLimits().records, 8'388'608U);
}

TEST_F(WalkLimitsTest, APartThatIsItsOwnDescendantEndsTheWalk)
{
    m_limits.depth = 6;
    EXPECT_EQ(failureOf("<InstanceGraph rootRefs='i1'><Instance id='i1' partRef='p'/><Instance id='i2' partRef='q'/>"
                        "<Instance id='i3' partRef='p'/></InstanceGraph>"
                        "<Part id='p' instanceRefs='i2'/><Part id='q' instanceRefs='i3'/>"),
              inDocument("refers to itself, or is an assembly of more than 6 levels: i1/i2/i3/i2/i3/i2/i3"));
}

TEST_F(WalkLimitsTest, ALongPathIsToldByItsEnds)
{
    m_limits.depth = 100;
    const std::string line = failureOf("<InstanceGraph rootRefs='i1'><Instance id='i1' partRef='p'/></InstanceGraph>"
                                       "<Part id='p' instanceRefs='i1'/>");
    EXPECT_EQ(line, inDocument("refers to itself, or is an assembly of more than 100 levels: "
                               "i1/i1/i1/i1/i1/i1/i1/i1/i1/i1/.../i1/i1/i1/i1/i1/i1/i1/i1/i1/i1"));
}

TEST_F(WalkLimitsTest, TheDefaultDepthStopsASelfReference)
{
    EXPECT_THAT(failureOf("<InstanceGraph rootRefs='p'><Instance id='i' partRef='p' transformRef='t' materialRef='m'/>"
                          "</InstanceGraph><Part id='p' instanceRefs='i' representationRefs='r'/>"
                          "<Representation id='r' location='a.jt' format='JT'/><Material id='m'/>"),
                HasSubstr("more than 1000 levels: i/i/"));
}

TEST_F(WalkLimitsTest, ACompoundThatFindsItsOwnParentEndsTheWalk)
{
    // The outer element registers behind the inner one, so that their common id leads to the outer one.
    m_limits.depth = 50;
    EXPECT_THAT(failureOf("<InstanceGraph rootRefs='i'><Instance id='i' partRef='p'/></InstanceGraph><Part id='p'>"
                          "<Representation id='r'><CompoundRep id='r'/></Representation></Part>"),
                HasSubstr("more than 50 levels: i"));
}

TEST_F(WalkLimitsTest, AnAssemblyOfTheLimitsDepthIsBuilt)
{
    m_limits.depth = 12;
    build(chain(12));
    ASSERT_TRUE(m_tree);
    EXPECT_EQ(m_structure->getNodeCount(), 13U);
    EXPECT_THAT(m_log, testing::IsEmpty());
}

TEST_F(WalkLimitsTest, OneLevelMoreIsNot)
{
    m_limits.depth = 12;
    EXPECT_THAT(failureOf(chain(13)), HasSubstr("more than 12 levels: i1/i2/i3"));
}

TEST_F(WalkLimitsTest, ATreeOfTheLimitsSizeIsBuilt)
{
    // 1 + 3 + 9 + 27 parts, each of the last with three places that lead nowhere, and the root.
    m_limits.records = 1 + 40 + 81;
    build(bush(4, 3));
    ASSERT_TRUE(m_tree);
    EXPECT_EQ(m_structure->getNodeCount(), 41U);
}

TEST_F(WalkLimitsTest, OnePlaceMoreIsNot)
{
    m_limits.records = 40 + 81;
    EXPECT_EQ(failureOf(bush(4, 3)),
              inDocument("refers to itself, or is an assembly of more than 121 records: i1/i2/i3"));
}

TEST_F(WalkLimitsTest, AFewLinesThatMultiplyEndAtTheLimit)
{
    m_limits.records = 10'000;
    EXPECT_THAT(failureOf(bush(60, 10)), HasSubstr("more than 10000 records: i1/i2/"));
}

TEST_F(WalkLimitsTest, PlacesThatLeadNowhereMultiplyNoFurther)
{
    m_limits.records = 1000;
    std::string text = "<InstanceGraph rootRefs='p'/><Part id='p' representationRefs='";
    for (int i = 0; i < 1000; ++i)
        text += "none ";
    EXPECT_THAT(failureOf(text + "'/>"), HasSubstr("more than 1000 records: "));
}

TEST_F(WalkLimitsTest, AfterAFailureTheStructureCanBuildUnderWiderLimits)
{
    m_limits.depth = 3;
    failureOf(chain(5));
    m_structure->setLimits({5, 100});
    m_tree = m_structure->createScene();
    ASSERT_TRUE(m_tree);
    EXPECT_EQ(m_structure->getNodeCount(), 6U);
}

} // namespace

} // namespace HB::Visualization
