// How the walk over a document makes the tree and the table.

#include "cad/xml/CADInstance.h"
#include "cad/xml/CADPart.h"
#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Transform.h"
#include "scene/EditAudit.h"
#include "tests/cad/visualization/PLMXMLStructureTest.h"

#include <tinyxml.h>

namespace HB::Visualization
{

namespace
{

using SceneConstructionTest = PLMXMLStructureTest;

TEST_F(SceneConstructionTest, DocumentsThatCannotBeReadAreToldByFalse)
{
    EXPECT_FALSE(m_structure->loadDocument(path(QStringLiteral("missing.plmxml")).toStdString()));
    for (const char* text : {"", "<PLMXML>", "<Other/>",
                             "<PLMXML><ProductDef><InstanceGraph><Transform>1 x 3</Transform></InstanceGraph>"
                             "</ProductDef></PLMXML>",
                             "<PLMXML><ProductDef><Material ambient='word'/></ProductDef></PLMXML>"})
        EXPECT_FALSE(PLMXMLProductStructure().loadDocument(write(QStringLiteral("bad.plmxml"), text).toStdString()))
            << text;
}

TEST_F(SceneConstructionTest, ADocumentWithoutProductDefIsARootWithoutRecord)
{
    const QString file = write(QString::fromUtf8("Größe 1.v2.plmxml"), "<PLMXML/>");
    ASSERT_TRUE(m_structure->loadDocument(file.toStdString()));
    m_tree = m_structure->createScene();
    EXPECT_EQ(tree(), "Größe 1.v2 [Transform]\n");
    EXPECT_EQ(m_structure->getNodeCount(), 0U);
    EXPECT_FALSE(m_tree->getParent());
}

TEST_F(SceneConstructionTest, TheProductDefIsTheRootRecord)
{
    build("<Part id='p'/>");
    EXPECT_EQ(tree(), "doc [Transform]\n");
    EXPECT_EQ(records(), "0 ProductDef pd Idle node doc in -\n");
}

TEST_F(SceneConstructionTest, EachGraphIsATransformWithoutNameAndRecord)
{
    build("<InstanceGraph id='g1' name='G'/><InstanceGraph id='g2'/>");
    EXPECT_EQ(tree(), "doc [Transform]\n"
                      "  - [Transform]\n"
                      "  - [Transform]\n");
    EXPECT_EQ(m_structure->getNodeCount(), 1U);
}

TEST_F(SceneConstructionTest, RootsAreInstancesOrPartsAndAnythingElseIsPassedOver)
{
    build("<InstanceGraph rootRefs='#i #nothing #p f.plmxml#p #both'><Instance id='i' partRef='#p'/>"
          "<Instance id='both' partRef='#q'/></InstanceGraph>"
          "<Part id='p' name='P'/><Part id='q' name='Q'/><Part id='both' name='never'/>");
    EXPECT_EQ(tree(), "doc [Transform]\n"
                      "  - [Transform]\n"
                      "    P [Transform]\n"
                      "    P [Transform]\n"
                      "    Q [Transform]\n");
    EXPECT_EQ(records(), "0 ProductDef pd Idle node doc in - children 1 2 3\n"
                         "1 Part p Idle node P in -\n"
                         "2 Part p Idle node P in -\n"
                         "3 Part q Idle node Q in -\n");
}

TEST_F(SceneConstructionTest, RecordsComeDepthFirstGeometryBeforeInstances)
{
    build("<InstanceGraph rootRefs='i1'><Instance id='i1' partRef='a'/><Instance id='i2' partRef='b'/>"
          "<Instance id='i3' partRef='c'/></InstanceGraph>"
          "<Part id='a' name='A' instanceRefs='i2 i3' representationRefs='r'/>"
          "<Part id='b' name='B' representationRefs='r'/><Part id='c' name='C'/>"
          "<Representation id='r' location='r.jt' format='JT'/>");
    EXPECT_EQ(tree(), "doc [Transform]\n"
                      "  - [Transform]\n"
                      "    A [Transform]\n"
                      "      A-geom [Transform]\n"
                      "      B [Transform]\n"
                      "        B-geom [Transform]\n"
                      "      C [Transform]\n");
    EXPECT_EQ(records(), "0 ProductDef pd Idle node doc in - children 1\n"
                         "1 Part a Idle node A in - children 2 3 5\n"
                         "2 Representation r FilePending node A-geom in A\n"
                         "3 Part b Idle node B in A children 4\n"
                         "4 Representation r FilePending node B-geom in B\n"
                         "5 Part c Idle node C in A\n");
}

TEST_F(SceneConstructionTest, InstancesOfOneTransformReferenceShareOneCore)
{
    build("<InstanceGraph rootRefs='i1 i2 i3'><Instance id='i1' name='L' partRef='p' transformRef='#t'/>"
          "<Instance id='i2' name='R' partRef='p' transformRef='#t'/>"
          "<Instance id='i3' name='O' partRef='p' transformRef='t'/>"
          "<Transform id='t' type='translate'>1 2 3</Transform></InstanceGraph><Part id='p' name='P'/>");
    EXPECT_EQ(tree(), "doc [Transform]\n"
                      "  - [Transform]\n"
                      "    L [Transform @1] at 1000 2000 3000\n"
                      "      P [Transform]\n"
                      "    R [Transform @1] at 1000 2000 3000\n"
                      "      P [Transform]\n"
                      "    O [Transform] at 1000 2000 3000\n"
                      "      P [Transform]\n");
    EXPECT_EQ(records(), "0 ProductDef pd Idle node doc in - children 1 2 3\n"
                         "1 Part p Idle node P in L\n"
                         "2 Part p Idle node P in R\n"
                         "3 Part p Idle node P in O\n");
}

TEST_F(SceneConstructionTest, ATransformThatIsNotFoundIsASharedIdentity)
{
    build("<InstanceGraph rootRefs='i1 i2'><Instance id='i1' name='L' transformRef='#none'/>"
          "<Instance id='i2' name='R' transformRef='#none'/></InstanceGraph>");
    EXPECT_EQ(tree(), "doc [Transform]\n"
                      "  - [Transform]\n"
                      "    L [Transform @1]\n"
                      "    R [Transform @1]\n");
    EXPECT_EQ(m_structure->getNodeCount(), 1U);
}

TEST_F(SceneConstructionTest, AnInstanceWithoutTransformAndMaterialIsNoLevel)
{
    build("<InstanceGraph rootRefs='i'><Instance id='i' name='I' partRef='p'/></InstanceGraph><Part id='p' name='P'/>");
    EXPECT_EQ(tree(), "doc [Transform]\n"
                      "  - [Transform]\n"
                      "    P [Transform]\n");
}

TEST_F(SceneConstructionTest, AnInstanceWithoutNameIsNamedAfterItsPartByBareIdOnly)
{
    build("<InstanceGraph rootRefs='i1 i2 i3'><Instance id='i1' partRef='p' transformRef='t1'/>"
          "<Instance id='i2' partRef='#p' transformRef='t2'/><Instance id='i3' partRef='none' transformRef='t3'/>"
          "</InstanceGraph><Part id='p' name='P'/>");
    EXPECT_EQ(tree(), "doc [Transform]\n"
                      "  - [Transform]\n"
                      "    P [Transform]\n"
                      "      P [Transform]\n"
                      "    - [Transform]\n"
                      "      P [Transform]\n"
                      "    - [Transform]\n");
}

TEST_F(SceneConstructionTest, AMaterialIsALeafBeforeThePartNode)
{
    build("<InstanceGraph rootRefs='i1 i2'><Instance id='i1' name='I' partRef='p' materialRef='#m'/>"
          "<Instance id='i2' name='J' partRef='p' materialRef='m' transformRef='t'/></InstanceGraph>"
          "<Part id='p' name='P'/><Material id='m' name='red'/>");
    EXPECT_EQ(tree(), "doc [Transform]\n"
                      "  - [Transform]\n"
                      "    red [MaterialGroup] material red\n"
                      "    P [Transform]\n"
                      "    J [Transform]\n"
                      "      red [MaterialGroup] material red\n"
                      "      P [Transform]\n");
}

TEST_F(SceneConstructionTest, EachInstanceHasAMaterialOfItsOwn)
{
    build("<InstanceGraph rootRefs='i1 i2'><Instance id='i1' materialRef='m'/><Instance id='i2' materialRef='m'/>"
          "</InstanceGraph><Material id='m' name='red' diffuse='1 0 0'/>");
    EXPECT_EQ(materials(),
              "red ambient 0 0 0 diffuse 1 0 0 emission 0 0 0 specular 0 0 0 transparency 0 shininess 0\n"
              "red ambient 0 0 0 diffuse 1 0 0 emission 0 0 0 specular 0 0 0 transparency 0 shininess 0\n");
}

TEST_F(SceneConstructionTest, AMaterialThatIsNotFoundCostsTheGroupAlone)
{
    build("<InstanceGraph rootRefs='i'><Instance id='i' name='I' partRef='p' materialRef='none' transformRef='t'/>"
          "</InstanceGraph><Part id='p' name='P'/>");
    EXPECT_EQ(tree(), "doc [Transform]\n"
                      "  - [Transform]\n"
                      "    I [Transform]\n"
                      "      P [Transform]\n");
}

TEST_F(SceneConstructionTest, APartThatIsNotFoundLeavesTransformAndMaterial)
{
    build("<InstanceGraph rootRefs='i'><Instance id='i' name='I' partRef='none' materialRef='m' transformRef='t'/>"
          "</InstanceGraph><Material id='m' name='red'/>");
    EXPECT_EQ(tree(), "doc [Transform]\n"
                      "  - [Transform]\n"
                      "    I [Transform]\n"
                      "      red [MaterialGroup] material red\n");
    EXPECT_EQ(m_structure->getNodeCount(), 1U);
}

TEST_F(SceneConstructionTest, InstancesAndRepresentationsThatAreNotFoundArePassedOver)
{
    build("<InstanceGraph rootRefs='p'/><Part id='p' name='P' instanceRefs='#none f.xml#i' "
          "representationRefs='none r'/><Representation id='r'/>");
    EXPECT_EQ(tree(), "doc [Transform]\n"
                      "  - [Transform]\n"
                      "    P [Transform]\n"
                      "      P-geom [Transform]\n");
}

TEST_F(SceneConstructionTest, PartsBearTheirNameOrAtARootTheirId)
{
    build("<InstanceGraph rootRefs='p q i'><Instance id='i' name='I' partRef='q'/></InstanceGraph>"
          "<Part id='p' name='P'/><Part id='q'/>");
    EXPECT_EQ(tree(), "doc [Transform]\n"
                      "  - [Transform]\n"
                      "    P [Transform]\n"
                      "    q [Transform]\n"
                      "    q [Transform]\n");
}

TEST_F(SceneConstructionTest, PartsWithoutNameBelowAPartBearThatOfTheirInstance)
{
    build("<InstanceGraph rootRefs='p'><Instance id='i1' name='A' partRef='q'/><Instance id='i2' partRef='q'/>"
          "<Instance id='i3' name='B' partRef='r'/></InstanceGraph>"
          "<Part id='p' name='P' instanceRefs='i1 i2 i3'/><Part id='q'/><Part id='r' name='R'/>");
    EXPECT_EQ(tree(), "doc [Transform]\n"
                      "  - [Transform]\n"
                      "    P [Transform]\n"
                      "      A [Transform]\n"
                      "      i2 [Transform]\n"
                      "      R [Transform]\n");
}

TEST_F(SceneConstructionTest, TheRunningNameBeginsAnewAtEachRoot)
{
    build("<InstanceGraph rootRefs='p i'><Instance id='i' name='I' partRef='q'/></InstanceGraph>"
          "<Part id='p' name='P'/><Part id='q'/>");
    EXPECT_EQ(tree(), "doc [Transform]\n"
                      "  - [Transform]\n"
                      "    P [Transform]\n"
                      "    q [Transform]\n");
}

TEST_F(SceneConstructionTest, APartWithoutNameAndIdHasNoName)
{
    build("<InstanceGraph rootRefs='#'/><Part/>");
    EXPECT_EQ(tree(), "doc [Transform]\n"
                      "  - [Transform]\n"
                      "    - [Transform]\n");
}

TEST_F(SceneConstructionTest, APartThatTwoInstancesPlaceIsWalkedTwice)
{
    build("<InstanceGraph rootRefs='i1 i2'><Instance id='i1' partRef='p'/><Instance id='i2' partRef='p'/>"
          "</InstanceGraph><Part id='p' name='P' representationRefs='r'/>"
          "<Representation id='r' location='r.jt' format='JT'/>");
    EXPECT_EQ(m_structure->getNodeCount(), 5U);
    EXPECT_FALSE(m_structure->getSceneNode(1) == m_structure->getSceneNode(3));
    EXPECT_FALSE(m_structure->getSceneNode(1)->getCore() == m_structure->getSceneNode(3)->getCore());
    EXPECT_FALSE(m_structure->getSceneNode(2)->getCore() == m_structure->getSceneNode(4)->getCore());
}

TEST_F(SceneConstructionTest, OnlyAssembliesAndSolidsShowGeometry)
{
    for (const char* type : {"minimal", "wire", "sheet", "general"}) {
        build(std::string("<InstanceGraph rootRefs='p'/><Part id='p' name='P' type='") + type +
              "'><Representation transformRef='t' location='r.jt' format='JT'/></Part>"
              "<InstanceGraph><Transform id='t' type='translate'>1 0 0</Transform></InstanceGraph>");
        EXPECT_EQ(tree(), "doc [Transform]\n"
                          "  - [Transform]\n"
                          "    P [Transform]\n"
                          "      - [Transform] at 1000 0 0\n"
                          "  - [Transform]\n");
        EXPECT_EQ(m_structure->getNodeCount(), 2U);
    }
}

TEST_F(SceneConstructionTest, ARepresentationWithCompoundsIsOnlyThese)
{
    build("<InstanceGraph rootRefs='p'><Transform id='t' type='translate'>1 0 0</Transform></InstanceGraph>"
          "<Part id='p' name='P'><Representation name='R' transformRef='t' location='r.jt' format='JT'>"
          "<CompoundRep id='c1' name='C1' location='c1.jt' format='JT'/>"
          "<CompoundRep name='C2' location='c2.jt' format='JT'>"
          "<CompoundRep id='c3' name='C3' transformRef='t' location='c3.jt' format='JT'/></CompoundRep>"
          "</Representation></Part>");
    EXPECT_EQ(tree(), "doc [Transform]\n"
                      "  - [Transform]\n"
                      "    P [Transform]\n"
                      "      C1 [Transform]\n"
                      "      - [Transform] at 1000 0 0\n"
                      "        C3 [Transform]\n");
    EXPECT_EQ(records(), "0 ProductDef pd Idle node doc in - children 1\n"
                         "1 Part p Idle node P in - children 2 3\n"
                         "2 CompoundRep c1 FilePending node C1 in P\n"
                         "3 CompoundRep c3 FilePending node C3 in -\n");
}

TEST_F(SceneConstructionTest, RepresentationsTakeCoresOfInstancesAndShareNoneAmongThemselves)
{
    build("<InstanceGraph rootRefs='i'><Instance id='i' name='I' partRef='p' transformRef='t'/>"
          "<Transform id='t' type='translate'>1 0 0</Transform>"
          "<Transform id='u' type='translate'>2 0 0</Transform></InstanceGraph>"
          "<Part id='p' name='P'><Representation id='r1' transformRef='t'/><Representation id='r2' transformRef='u'/>"
          "<Representation id='r3' transformRef='u'/><Representation id='r4' transformRef='none'/></Part>");
    EXPECT_EQ(tree(), "doc [Transform]\n"
                      "  - [Transform]\n"
                      "    I [Transform @1] at 1000 0 0\n"
                      "      P [Transform]\n"
                      "        - [Transform @1] at 1000 0 0\n"
                      "          P-geom [Transform]\n"
                      "        - [Transform] at 2000 0 0\n"
                      "          P-geom [Transform]\n"
                      "        - [Transform] at 2000 0 0\n"
                      "          P-geom [Transform]\n"
                      "        P-geom [Transform]\n");
}

TEST_F(SceneConstructionTest, AnInstanceTakesNoCoreOfARepresentation)
{
    build("<InstanceGraph rootRefs='i1 i2'><Instance id='i1' partRef='p'/><Instance id='i2' name='I' transformRef='t'/>"
          "<Transform id='t' type='translate'>1 0 0</Transform></InstanceGraph>"
          "<Part id='p' name='P'><Representation transformRef='t'/></Part>");
    EXPECT_EQ(tree(), "doc [Transform]\n"
                      "  - [Transform]\n"
                      "    P [Transform]\n"
                      "      - [Transform] at 1000 0 0\n"
                      "        P-geom [Transform]\n"
                      "    I [Transform] at 1000 0 0\n");
}

TEST_F(SceneConstructionTest, OnlyTheMatrixOfARepresentationIsSetWithoutABracket)
{
    load("<InstanceGraph rootRefs='i'><Instance id='i' name='I' partRef='p' materialRef='m' transformRef='t'/>"
         "<Transform id='t' type='translate'>1 0 0</Transform><Transform id='u' type='scale'>2</Transform>"
         "</InstanceGraph><Part id='p' name='P'><Representation transformRef='u' location='a.jt' format='JT'/></Part>"
         "<Material id='m' name='red' diffuse='1 0 0'/>");
    const osg::EditAudit audit;
    m_tree = m_structure->createScene();
    const osg::NodePtr placed = m_structure->getSceneNode(2)->getParent();
    EXPECT_THAT(audit.unbracketed(),
                testing::ElementsAre(osg::EditAudit::Record{placed->getCore()->getContainerId(), "Transform",
                                                            osg::Transform::MatrixFieldMask}));
    EXPECT_EQ(audit.openBrackets(), 0U);
    EXPECT_THAT(audit.unmatchedEnds(), testing::IsEmpty());
}

TEST_F(SceneConstructionTest, ChildrenAreAddedWithTheMasksOfTheirKind)
{
    load("<InstanceGraph rootRefs='i'><Instance id='i' name='I' partRef='p' transformRef='t'/></InstanceGraph>"
         "<Part id='p' name='P'/>");
    const osg::EditAudit audit;
    m_tree = m_structure->createScene();
    const osg::NodePtr graph = m_tree->getChild(0), instance = graph->getChild(0);
    const auto bracket = [](const osg::NodePtr& node, osg::FieldMask mask) {
        return osg::EditAudit::Record{node->getContainerId(), "Node", mask};
    };
    EXPECT_THAT(audit.brackets(),
                testing::IsSupersetOf({bracket(graph, osg::Node::ChildrenFieldMask), bracket(instance, 0xFFFFFFFF)}));
}

TEST_F(SceneConstructionTest, AnInstanceBelowAnInstanceThatBringsNothingSpoilsThePath)
{
    load("<InstanceGraph rootRefs='p'><Instance id='outer'/><Instance id='later' partRef='q'/></InstanceGraph>"
         "<Part id='p' name='P' instanceRefs='inner later'/><Part id='q' name='Q'/><Material id='m' name='red'/>"
         "<Occurrence instanceRefs='later' materialRef='m'/>");
    auto& document = PLMXMLStructureTestAccess::document(*m_structure);
    auto* inner = new XML::CAD::CADInstance(document.findInstance("outer"));
    inner->setId("inner");
    TiXmlElement xml("Instance");
    xml.SetAttribute("partRef", "q");
    inner->loadAttributes(xml);
    document.addInstance(inner);
    m_tree = m_structure->createScene();
    // The path is "inner later" where the later instance stands, so that its occurrence does not match.
    EXPECT_EQ(tree(), "doc [Transform]\n"
                      "  - [Transform]\n"
                      "    P [Transform]\n"
                      "      Q [Transform]\n");
    EXPECT_THAT(PLMXMLStructureTestAccess::instancePath(*m_structure), testing::ElementsAre("inner"));
}

TEST_F(SceneConstructionTest, AnInstanceBelowAnInstanceThatBringsSomethingIsPlaced)
{
    load("<InstanceGraph rootRefs='p'><Instance id='outer'/><Instance id='later' partRef='q'/></InstanceGraph>"
         "<Part id='p' name='P' instanceRefs='inner later'/><Part id='q' name='Q'/><Material id='m' name='red'/>"
         "<Occurrence instanceRefs='inner' transformRef='t'/><Occurrence instanceRefs='later' materialRef='m'/>");
    auto& document = PLMXMLStructureTestAccess::document(*m_structure);
    auto* inner = new XML::CAD::CADInstance(document.findInstance("outer"));
    inner->setId("inner");
    TiXmlElement xml("Instance");
    xml.SetAttribute("partRef", "q");
    inner->loadAttributes(xml);
    document.addInstance(inner);
    m_tree = m_structure->createScene();
    EXPECT_EQ(tree(), "doc [Transform]\n"
                      "  - [Transform]\n"
                      "    P [Transform]\n"
                      "      Q [Transform]\n"
                      "        Q [Transform]\n"
                      "      red [MaterialGroup] material red\n"
                      "      Q [Transform]\n");
    EXPECT_THAT(PLMXMLStructureTestAccess::instancePath(*m_structure), testing::IsEmpty());
}

TEST_F(SceneConstructionTest, ASecondSceneBeginsAnew)
{
    build("<InstanceGraph rootRefs='i'><Instance id='i' name='I' partRef='p' transformRef='t'/></InstanceGraph>"
          "<Part id='p' name='P'/>");
    const std::string first = tree(), firstRecords = records();
    m_tree = m_structure->createScene();
    EXPECT_EQ(tree(), first);
    EXPECT_EQ(records(), firstRecords);
}

TEST_F(SceneConstructionTest, TheTreeOutlivesTheStructure)
{
    build("<InstanceGraph rootRefs='p'/><Part id='p' name='P'/>");
    m_structure.reset();
    EXPECT_EQ(tree(), "doc [Transform]\n"
                      "  - [Transform]\n"
                      "    P [Transform]\n");
    EXPECT_EQ(m_tree->getRefCount(), 1U);
}

} // namespace

} // namespace HB::Visualization
