// The records that wait for geometry.

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/MaterialGroup.h"
#include "scene/EditAudit.h"
#include "tests/cad/visualization/PLMXMLStructureTest.h"

namespace HB::Visualization
{

namespace
{

class GeometryRecordsTest : public PLMXMLStructureTest
{
protected:
    /// A part P with this content, at the root or placed by an instance I with these attributes.
    void buildPart(const std::string& attributes, const std::string& content, const std::string& instance = "")
    {
        build("<InstanceGraph rootRefs='i'><Instance id='i' name='I' partRef='p' " + instance +
              "/><Transform id='t' type='translate'>1 0 0</Transform></InstanceGraph><Part id='p' " + attributes + ">" +
              content + "</Part><Material id='m' name='red' diffuse='1 0 0'/>");
    }
    std::string stateOf(const char* type, const std::string& representation)
    {
        buildPart(std::string("name='P' type='") + type + "'", "<Representation " + representation + "/>");
        const std::string text = records();
        const std::string last = text.substr(text.rfind('\n', text.size() - 2) + 1);
        return last.substr(0, last.find(" node"));
    }
};

TEST_F(GeometryRecordsTest, AssembliesWaitForThreeFormatsByTheirExactWords)
{
    for (const char* format : {"JT", "WRL", "OSB"})
        EXPECT_EQ(stateOf("assembly", std::string("id='r' location='a.x' format='") + format + "'"),
                  "2 Representation r FilePending");
    for (const char* format : {"jt", "Jt", "wrl", "STEP", "CSB", "JT ", "OSB2", ""})
        EXPECT_EQ(stateOf("assembly", std::string("id='r' location='a.x' format='") + format + "'"),
                  "2 Representation r Idle");
    EXPECT_EQ(stateOf("assembly", "id='r' format='JT'"), "2 Representation r Idle");
}

TEST_F(GeometryRecordsTest, SolidsWaitWhateverTheFormat)
{
    for (const char* attributes : {"location='a.stp' format='STEP'", "location='a.jt' format='JT'", "format='JT'", ""})
        EXPECT_EQ(stateOf("solid", std::string("id='r' ") + attributes), "1 Representation r FilePending");
}

TEST_F(GeometryRecordsTest, APlainRepresentationLosesItsNameToThatOfItsPart)
{
    buildPart("name='P'", "<Representation name='R'/>");
    EXPECT_EQ(tree(), "doc [Transform]\n"
                      "  - [Transform]\n"
                      "    P [Transform]\n"
                      "      P-geom [Transform]\n");
}

TEST_F(GeometryRecordsTest, TheNameIsThePartsOwnAndNotTheRunningOne)
{
    build("<InstanceGraph rootRefs='top'><Instance id='i' name='A' partRef='p'/></InstanceGraph>"
          "<Part id='top' name='Top' instanceRefs='i'/><Part id='p'><Representation name='R'/></Part>");
    EXPECT_EQ(tree(), "doc [Transform]\n"
                      "  - [Transform]\n"
                      "    Top [Transform]\n"
                      "      A [Transform]\n"
                      "        p-geom [Transform]\n");
}

TEST_F(GeometryRecordsTest, CompoundsKeepTheirNameAndOnlyEmptyOnesTakeTheRunningOne)
{
    buildPart("name='P'", "<Representation><CompoundRep/><CompoundRep name='C'/><CompoundRep/></Representation>");
    EXPECT_EQ(tree(), "doc [Transform]\n"
                      "  - [Transform]\n"
                      "    P [Transform]\n"
                      "      P-geom [Transform]\n"
                      "      C [Transform]\n"
                      "      P-geom [Transform]\n");
}

TEST_F(GeometryRecordsTest, CompoundsWithoutNameTakeTheNameOfTheirInstance)
{
    build("<InstanceGraph rootRefs='top'><Instance id='i' name='A' partRef='p'/></InstanceGraph>"
          "<Part id='top' name='Top' instanceRefs='i'/>"
          "<Part id='p'><Representation><CompoundRep/></Representation></Part>");
    EXPECT_EQ(tree(), "doc [Transform]\n"
                      "  - [Transform]\n"
                      "    Top [Transform]\n"
                      "      A [Transform]\n"
                      "        A-geom [Transform]\n");
}

TEST_F(GeometryRecordsTest, EachRepresentationStartsFromTheNameOfItsPart)
{
    buildPart("name='P'", "<Representation/><Representation><CompoundRep/></Representation>");
    EXPECT_EQ(tree(), "doc [Transform]\n"
                      "  - [Transform]\n"
                      "    P [Transform]\n"
                      "      P-geom [Transform]\n"
                      "      P-geom [Transform]\n");
}

TEST_F(GeometryRecordsTest, AssemblyRecordsHangBelowTheirTransform)
{
    buildPart("name='P'", "<Representation id='r' transformRef='t' location='a.jt' format='JT'/>");
    EXPECT_EQ(tree(), "doc [Transform]\n"
                      "  - [Transform]\n"
                      "    P [Transform]\n"
                      "      - [Transform] at 1000 0 0\n"
                      "        P-geom [Transform]\n");
    EXPECT_EQ(records(), "0 ProductDef pd Idle node doc in - children 1\n"
                         "1 Part p Idle node P in - children 2\n"
                         "2 Representation r FilePending node P-geom in -\n");
}

TEST_F(GeometryRecordsTest, ASolidPartsRecordIsTakenOverByItsRepresentation)
{
    buildPart("name='P' type='solid'", "<Representation id='r' name='R' location='a%20b.stp' format='STEP'/>");
    EXPECT_EQ(tree(), "doc [Transform]\n"
                      "  - [Transform]\n"
                      "    P [Transform]\n");
    EXPECT_EQ(records(), "0 ProductDef pd Idle node doc in - children 1\n"
                         "1 Representation r FilePending node P in -\n");
    EXPECT_EQ(m_structure->getNodeLocation(1), "a%20b.stp");
    EXPECT_EQ(m_structure->getNodeFileName(1), folder() + "a b.stp");
}

TEST_F(GeometryRecordsTest, TheTransformOfASolidPartsRepresentationStaysEmpty)
{
    buildPart("name='P' type='solid'", "<Representation id='r' transformRef='t' location='a.jt' format='JT'/>");
    EXPECT_EQ(tree(), "doc [Transform]\n"
                      "  - [Transform]\n"
                      "    P [Transform]\n"
                      "      P [Transform] at 1000 0 0\n");
    EXPECT_TRUE(m_structure->getSceneNode(1) == m_tree->getChild(0)->getChild(0));
}

TEST_F(GeometryRecordsTest, ASecondRepresentationOfASolidPartIsLeftOut)
{
    buildPart("name='P' type='solid'", "<Representation id='r1' location='a.jt' format='JT'/>"
                                       "<Representation id='r2' transformRef='t' location='b.jt' format='JT'/>");
    EXPECT_EQ(tree(), "doc [Transform]\n"
                      "  - [Transform]\n"
                      "    P [Transform]\n");
    EXPECT_EQ(records(), "0 ProductDef pd Idle node doc in - children 1\n"
                         "1 Representation r1 FilePending node P in -\n");
}

TEST_F(GeometryRecordsTest, OfTheCompoundsOfASolidPartTheFirstCounts)
{
    buildPart("name='P' type='solid'", "<Representation><CompoundRep id='c1' location='a.jt'/>"
                                       "<CompoundRep id='c2' location='b.jt'/></Representation>");
    EXPECT_EQ(records(), "0 ProductDef pd Idle node doc in - children 1\n"
                         "1 CompoundRep c1 FilePending node P in -\n");
}

TEST_F(GeometryRecordsTest, ASolidPartStillPlacesItsInstances)
{
    build("<InstanceGraph rootRefs='p'><Instance id='i' name='I' partRef='q'/></InstanceGraph>"
          "<Part id='p' name='P' type='solid' instanceRefs='i'><Representation id='r' location='a.jt'/></Part>"
          "<Part id='q' name='Q'/>");
    EXPECT_EQ(records(), "0 ProductDef pd Idle node doc in - children 1\n"
                         "1 Representation r FilePending node P in - children 2\n"
                         "2 Part q Idle node Q in P\n");
}

TEST_F(GeometryRecordsTest, WaitingRecordsTakeACopyOfTheMaterialGroupInForce)
{
    buildPart("name='P'",
              "<Representation id='r1' location='a.jt' format='JT'/><Representation id='r2' location='b.stp'/>",
              "materialRef='m'");
    EXPECT_EQ(records(), "0 ProductDef pd Idle node doc in - children 1\n"
                         "1 Part p Idle node P in - children 2 3\n"
                         "2 Representation r1 FilePending node P-geom in P material red\n"
                         "3 Representation r2 Idle node P-geom in P\n");
    const osg::NodePtr original = m_tree->getChild(0)->getChild(0);
    const osg::NodePtr copy = record(2).getMaterialNode();
    EXPECT_FALSE(copy == original);
    EXPECT_FALSE(copy->getCore() == original->getCore());
    const auto groupOf = [](const osg::NodePtr& node) { return osg::fcCast<osg::MaterialGroup>(node->getCore()); };
    EXPECT_TRUE(groupOf(copy)->getMaterial() == groupOf(original)->getMaterial());
}

TEST_F(GeometryRecordsTest, SolidsTakeTheCopyAsWell)
{
    buildPart("name='P' type='solid'", "<Representation id='r' location='a.stp'/>", "materialRef='m'");
    EXPECT_EQ(records(), "0 ProductDef pd Idle node doc in - children 1\n"
                         "1 Representation r FilePending node P in - material red\n");
}

TEST_F(GeometryRecordsTest, TheMaterialInForceIsThatOfTheNearestInstance)
{
    build("<InstanceGraph rootRefs='i1 i4'><Instance id='i1' materialRef='red' partRef='p'/>"
          "<Instance id='i2' materialRef='blue' partRef='g'/><Instance id='i3' partRef='g'/>"
          "<Instance id='i4' partRef='g'/></InstanceGraph><Part id='p' name='P' instanceRefs='i2 i3'/>"
          "<Part id='g' name='G'><Representation id='r' location='a.jt' format='JT'/></Part>"
          "<Material id='red' name='red'/><Material id='blue' name='blue'/>");
    EXPECT_EQ(records(), "0 ProductDef pd Idle node doc in - children 1 6\n"
                         "1 Part p Idle node P in - children 2 4\n"
                         "2 Part g Idle node G in P children 3\n"
                         "3 Representation r FilePending node G-geom in G material blue\n"
                         "4 Part g Idle node G in P children 5\n"
                         "5 Representation r FilePending node G-geom in G material red\n"
                         "6 Part g Idle node G in - children 7\n"
                         "7 Representation r FilePending node G-geom in G\n");
}

TEST_F(GeometryRecordsTest, UserDataIsThatOfTheRecordsElement)
{
    const std::string value = "<UserValue title='A' value='";
    buildPart("name='P'", "<UserData>" + value + "part'/></UserData><Representation><UserData>" + value +
                              "shape'/></UserData></Representation>");
    const auto text = [](const char* title) {
        return std::string(R"(<UserData><UserValue type="string" title="A" value=")") + title +
               R"("></UserValue></UserData>)";
    };
    EXPECT_EQ(m_structure->getUserDataText(0), "");
    EXPECT_EQ(m_structure->getUserDataText(1), text("part"));
    EXPECT_EQ(m_structure->getUserDataText(2), text("shape"));
    buildPart("name='P' type='solid'", "<UserData>" + value + "part'/></UserData><Representation><UserData>" + value +
                                           "shape'/></UserData></Representation>");
    EXPECT_EQ(m_structure->getUserDataText(1), text("shape"));
}

TEST_F(GeometryRecordsTest, MaterialCopiesGoWithTheStructure)
{
    buildPart("name='P'", "<Representation location='a.jt' format='JT'/>", "materialRef='m'");
    const osg::RefPtr<osg::NodePtr> copy(record(2).getMaterialNode());
    EXPECT_EQ(copy->getRefCount(), 2U);
    m_structure.reset();
    EXPECT_EQ(copy->getRefCount(), 1U);
}

} // namespace

} // namespace HB::Visualization
