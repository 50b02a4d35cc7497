// What occurrences put in place of the references of instances.

#include "tests/cad/visualization/PLMXMLStructureTest.h"

namespace HB::Visualization
{

namespace
{

class OccurrenceOverrideTest : public PLMXMLStructureTest
{
protected:
    /// An instance i1 of part P, which holds an instance i2 of part Q, with transforms and materials a to c.
    void buildWith(const std::string& occurrences, const std::string& innerAttributes = "")
    {
        build("<InstanceGraph rootRefs='i1'><Instance id='i1' name='I1' partRef='p'/><Instance id='i2' name='I2' "
              "partRef='q' " +
              innerAttributes +
              "/><Transform id='a' type='translate'>1 0 0</Transform>"
              "<Transform id='b' type='translate'>2 0 0</Transform></InstanceGraph>"
              "<Part id='p' name='P' instanceRefs='i2'/><Part id='q' name='Q'/>"
              "<Material id='red' name='red'/><Material id='blue' name='blue'/>" +
              occurrences);
    }
    /// The lines of the tree below P.
    std::string belowP() const
    {
        const std::string text = tree();
        const std::string head = "    P [Transform]\n";
        return text.substr(text.find(head) + head.size());
    }
};

TEST_F(OccurrenceOverrideTest, WithoutOccurrenceTheInstancesOwnReferencesHold)
{
    buildWith("", "transformRef='a' materialRef='red'");
    EXPECT_EQ(belowP(), "      I2 [Transform] at 1000 0 0\n"
                        "        red [MaterialGroup] material red\n"
                        "        Q [Transform]\n");
}

TEST_F(OccurrenceOverrideTest, BothTextsTakeThePlaceOfTheInstancesOwn)
{
    buildWith("<Occurrence instanceRefs='i1 i2' transformRef='b' materialRef='blue'/>",
              "transformRef='a' materialRef='red'");
    EXPECT_EQ(belowP(), "      I2 [Transform] at 2000 0 0\n"
                        "        blue [MaterialGroup] material blue\n"
                        "        Q [Transform]\n");
}

TEST_F(OccurrenceOverrideTest, ATextThatTheOccurrenceLacksLeavesTheInstancesOwn)
{
    buildWith("<Occurrence instanceRefs='i1 i2' materialRef='blue'/>", "transformRef='a' materialRef='red'");
    EXPECT_EQ(belowP(), "      I2 [Transform] at 1000 0 0\n"
                        "        blue [MaterialGroup] material blue\n"
                        "        Q [Transform]\n");
    buildWith("<Occurrence instanceRefs='i1 i2' transformRef='b'/>", "transformRef='a' materialRef='red'");
    EXPECT_EQ(belowP(), "      I2 [Transform] at 2000 0 0\n"
                        "        red [MaterialGroup] material red\n"
                        "        Q [Transform]\n");
}

TEST_F(OccurrenceOverrideTest, AnOccurrenceMakesTheNodesThatTheInstanceLacks)
{
    buildWith("<Occurrence instanceRefs='#i1 #i2' transformRef='#b' materialRef='#blue'/>");
    EXPECT_EQ(belowP(), "      I2 [Transform] at 2000 0 0\n"
                        "        blue [MaterialGroup] material blue\n"
                        "        Q [Transform]\n");
}

TEST_F(OccurrenceOverrideTest, TheWholePathMustMatch)
{
    buildWith("<Occurrence instanceRefs='i2' transformRef='b'/><Occurrence instanceRefs='i2 i1' transformRef='b'/>"
              "<Occurrence instanceRefs='i1 i2 i2' transformRef='b'/><Occurrence transformRef='b'/>");
    EXPECT_EQ(belowP(), "      Q [Transform]\n");
}

TEST_F(OccurrenceOverrideTest, RootsAreMatchedByTheirPathOfOne)
{
    buildWith("<Occurrence instanceRefs='i1' transformRef='b'/>");
    EXPECT_EQ(tree(), "doc [Transform]\n"
                      "  - [Transform]\n"
                      "    I1 [Transform] at 2000 0 0\n"
                      "      P [Transform]\n"
                      "        Q [Transform]\n");
}

TEST_F(OccurrenceOverrideTest, TheActiveViewComesBeforeTheDefinitionEvenForATextItLacks)
{
    buildWith("<Occurrence instanceRefs='i1 i2' transformRef='a' materialRef='red'/>"
              "<ProductView/><ProductView state='active'><Occurrence instanceRefs='i1 i2' materialRef='blue'/>"
              "</ProductView>");
    EXPECT_EQ(belowP(), "      blue [MaterialGroup] material blue\n"
                        "      Q [Transform]\n");
}

TEST_F(OccurrenceOverrideTest, OccurrencesOfOtherViewsDoNotCount)
{
    buildWith("<ProductView state='active'/>"
              "<ProductView><Occurrence instanceRefs='i1 i2' materialRef='blue'/></ProductView>");
    EXPECT_EQ(belowP(), "      Q [Transform]\n");
}

TEST_F(OccurrenceOverrideTest, WithoutAnyMatchInTheViewTheDefinitionHolds)
{
    buildWith("<Occurrence instanceRefs='i1 i2' transformRef='a'/>"
              "<ProductView state='active'><Occurrence instanceRefs='i1' materialRef='blue'/></ProductView>");
    EXPECT_EQ(tree(), "doc [Transform]\n"
                      "  - [Transform]\n"
                      "    blue [MaterialGroup] material blue\n"
                      "    P [Transform]\n"
                      "      I2 [Transform] at 1000 0 0\n"
                      "        Q [Transform]\n");
}

TEST_F(OccurrenceOverrideTest, OnlyTheFirstOfSeveralCountsForBothTexts)
{
    buildWith("<Occurrence instanceRefs='i1 i2' materialRef='blue'/>"
              "<Occurrence instanceRefs='i1 i2' transformRef='b' materialRef='red'/>");
    EXPECT_EQ(belowP(), "      blue [MaterialGroup] material blue\n"
                        "      Q [Transform]\n");
    buildWith("<Occurrence instanceRefs='i1 i2'/><Occurrence instanceRefs='i1 i2' transformRef='b'/>",
              "transformRef='a'");
    EXPECT_EQ(belowP(), "      I2 [Transform] at 1000 0 0\n"
                        "        Q [Transform]\n");
}

TEST_F(OccurrenceOverrideTest, TheCoreIsSharedByTheTextOfTheOverride)
{
    buildWith("<Occurrence instanceRefs='i1 i2' transformRef='a'/><Occurrence instanceRefs='i1' transformRef='a'/>");
    EXPECT_EQ(tree(), "doc [Transform]\n"
                      "  - [Transform]\n"
                      "    I1 [Transform @1] at 1000 0 0\n"
                      "      P [Transform]\n"
                      "        I2 [Transform @1] at 1000 0 0\n"
                      "          Q [Transform]\n");
}

TEST_F(OccurrenceOverrideTest, OccurrencesMakeNoRecords)
{
    buildWith("<Occurrence instanceRefs='i1 i2' transformRef='b' materialRef='blue'/>");
    EXPECT_EQ(records(), "0 ProductDef pd Idle node doc in - children 1\n"
                         "1 Part p Idle node P in - children 2\n"
                         "2 Part q Idle node Q in I2\n");
}

TEST_F(OccurrenceOverrideTest, AMaterialThatIsNotFoundHidesTheInstancesOwn)
{
    buildWith("<Occurrence instanceRefs='i1 i2' materialRef='none'/>", "materialRef='red'");
    EXPECT_EQ(belowP(), "      Q [Transform]\n");
}

} // namespace

} // namespace HB::Visualization
