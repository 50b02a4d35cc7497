// How the content of records comes into the scene.

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Geometry.h"
#include "host/OSGSystem/MaterialPool.h"
#include "host/znKernel/znScenegraph.h"
#include "scene/EditAudit.h"
#include "standalone/znUtils/CallTrace.h"
#include "tests/cad/visualization/PLMXMLStructureTest.h"

namespace HB::Visualization
{

namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

class RealizeRecordTest : public PLMXMLStructureTest
{
protected:
    /// A part P, placed by an instance with these attributes, with one representation, whose record is 2.
    void buildWith(const std::string& representation, const std::string& instance = "")
    {
        build("<InstanceGraph rootRefs='i'><Instance id='i' partRef='p' " + instance +
              "/></InstanceGraph><Part id='p' name='P'><Representation id='r' " + representation +
              "/></Part><Material id='m' name='red' diffuse='1 0 0'/>");
    }
    /// The lines of the tree from the record's node on.
    std::string below(std::uint32_t id) const { return treeText(m_structure->getSceneNode(id), folder()); }
    std::string stateOf(std::uint32_t id) { return std::to_string(static_cast<int>(record(id).getState())); }
};

TEST_F(RealizeRecordTest, ARecordWithoutFileIsRealizedByThatAlone)
{
    buildWith("location='a.stp' format='STEP'");
    const std::string before = tree();
    m_structure->realizeNode(2);
    EXPECT_EQ(stateOf(2), "2");
    m_structure->realizeNode(2);
    EXPECT_EQ(stateOf(2), "2");
    EXPECT_EQ(tree(), before);
    EXPECT_EQ(NodeRecordTestAccess::fileName(record(2)), "");
}

TEST_F(RealizeRecordTest, NullIsIgnored)
{
    m_structure->realizeRecord(nullptr);
}

TEST_F(RealizeRecordTest, WithoutReadingTheReferenceHangsBelowTheNode)
{
    buildWith("location='sub/a%20b.jt' format='JT'");
    m_structure->realizeNode(2);
    EXPECT_EQ(stateOf(2), "6");
    EXPECT_EQ(below(2), "P-geom [Transform]\n"
                        "  a b [ExtReference] file sub/a b.jt state 0\n");
    EXPECT_EQ(NodeRecordTestAccess::fileName(record(2)), "sub/a%20b.jt");
    EXPECT_EQ(m_structure->getNodeLocation(2), "");
}

TEST_F(RealizeRecordTest, ContentHangsBelowTheMaterialCopyInFrontOfOtherChildren)
{
    buildWith("location='a.jt' format='JT'", "materialRef='m'");
    addGroup(m_structure->getSceneNode(2), "other");
    const osg::NodePtr group = record(2).getMaterialNode();
    m_structure->realizeNode(2);
    EXPECT_EQ(below(2), "P-geom [Transform]\n"
                        "  red [MaterialGroup] material red\n"
                        "    a [ExtReference] file a.jt state 0\n"
                        "  other [Group]\n");
    EXPECT_TRUE(m_structure->getSceneNode(2)->getChild(0) == group);
}

TEST_F(RealizeRecordTest, FilesAreReadWhenThatIsWanted)
{
    m_loadFiles = true;
    writeTriangle(QStringLiteral("part ä.obj"));
    buildWith("location='part%20%C3%A4.obj' format='WRL'", "materialRef='m'");
    m_structure->realizeNode(2);
    EXPECT_EQ(below(2), "P-geom [Transform]\n"
                        "  red [MaterialGroup] material red\n"
                        "    part ä [ExtReference] file part ä.obj state 2\n"
                        "      - [Geometry]\n");
    EXPECT_THAT(m_log, IsEmpty());
}

TEST_F(RealizeRecordTest, ASecondUseOfAFileIsACloneThatSharesItsCores)
{
    m_loadFiles = true;
    writeTriangle(QStringLiteral("a.obj"));
    build("<InstanceGraph rootRefs='p'/><Part id='p' name='P'><Representation id='r1' location='a.obj' format='OSB'/>"
          "<Representation id='r2' location='./a.obj' format='WRL'/></Part>");
    m_structure->realizeNode(2);
    m_structure->realizeNode(3);
    EXPECT_EQ(tree(), "doc [Transform]\n"
                      "  - [Transform]\n"
                      "    P [Transform]\n"
                      "      P-geom [Transform]\n"
                      "        a [ExtReference @1] file a.obj state 2\n"
                      "          - [Geometry @2]\n"
                      "      P-geom [Transform]\n"
                      "        a [ExtReference @1] file a.obj state 2\n"
                      "          - [Geometry @2]\n");
    EXPECT_THAT(ProductStructureTestAccess::fileUsers(*m_structure),
                ElementsAre(testing::Pair(folder() + "a.obj", 2U)));
}

TEST_F(RealizeRecordTest, AMissingFileStaysAReference)
{
    m_loadFiles = true;
    buildWith("location='gone.jt' format='JT'");
    m_structure->realizeNode(2);
    EXPECT_EQ(stateOf(2), "6");
    EXPECT_EQ(below(2), "P-geom [Transform]\n"
                        "  gone [ExtReference] file gone.jt state 0\n");
}

TEST_F(RealizeRecordTest, ASecondRealisationDoesNothing)
{
    buildWith("location='a.jt' format='JT'");
    m_structure->realizeNode(2);
    const std::string before = tree();
    std::vector<std::string> calls;
    const zn::CallTrace trace([&calls](const std::string& call) { calls.push_back(call); });
    m_structure->realizeNode(2);
    EXPECT_EQ(tree(), before);
    EXPECT_THAT(calls, IsEmpty());
}

TEST_F(RealizeRecordTest, RequestingStatesAreLeftAlone)
{
    buildWith("location='a.jt' format='JT'");
    const std::string before = tree();
    for (const auto state :
         {CADLoadState::IdleLoadRequested, CADLoadState::RealizedUnloadRequested,
          CADLoadState::FilePendingLoadRequested, CADLoadState::FileLoadedUnloadRequested, CADLoadState::Realized}) {
        record(2).setState(state);
        m_structure->realizeNode(2);
        EXPECT_EQ(record(2).getState(), state);
    }
    EXPECT_EQ(tree(), before);
}

TEST_F(RealizeRecordTest, ASolidPartWithoutLocationKeepsWaiting)
{
    build("<InstanceGraph rootRefs='p'/><Part id='p' name='P' type='solid'><Representation id='r'/></Part>");
    record(1).setMarked(true);
    record(1).setActive(false);
    m_structure->realizeNode(1);
    EXPECT_EQ(stateOf(1), "4");
    EXPECT_EQ(below(1), "P [Transform]\n");
    EXPECT_FALSE(record(1).isMarked());
    EXPECT_TRUE(record(1).isActive());
}

TEST_F(RealizeRecordTest, ASolidPartWithoutLocationButWithMaterialGetsTheEmptyGroup)
{
    build("<InstanceGraph rootRefs='i'><Instance id='i' partRef='p' materialRef='m'/></InstanceGraph>"
          "<Part id='p' name='P' type='solid'><Representation id='r'/></Part><Material id='m' name='red'/>");
    m_structure->realizeNode(1);
    EXPECT_EQ(stateOf(1), "6");
    EXPECT_EQ(below(1), "P [Transform]\n"
                        "  red [MaterialGroup] material red\n");
}

TEST_F(RealizeRecordTest, ASolidPartsFileLandsBelowThePartNodeBesideTheEmptyTransform)
{
    build(
        "<InstanceGraph rootRefs='p'><Transform id='t' type='translate'>1 0 0</Transform></InstanceGraph>"
        "<Part id='p' name='P' type='solid'><Representation transformRef='t' location='a.stp' format='STEP'/></Part>");
    m_structure->realizeNode(1);
    EXPECT_EQ(below(1), "P [Transform]\n"
                        "  a [ExtReference] file a.stp state 0\n"
                        "  P [Transform] at 1000 0 0\n");
}

TEST_F(RealizeRecordTest, ActivityWishedBeforeIsOverridden)
{
    buildWith("location='a.jt' format='JT'");
    m_structure->setActive(2, false);
    m_structure->setMarked(2, true);
    m_structure->realizeNode(2);
    EXPECT_TRUE(m_structure->isActive(2));
    EXPECT_FALSE(m_structure->isMarked(2));
    m_structure->setActive(2, false);
    EXPECT_EQ(below(2), "P-geom [Transform]\n"
                        "  a [ExtReference] file a.jt state 0 inactive\n");
}

TEST_F(RealizeRecordTest, TheScenesPoolTakesTheMaterialsOfTheContent)
{
    m_loadFiles = true;
    write(QStringLiteral("a.mtl"), "newmtl steel\nKd 0.2 0.3 0.4\n");
    write(QStringLiteral("a.obj"), "mtllib a.mtl\nusemtl steel\nv 0 0 0\nv 2 0 0\nv 0 3 0\nf 1 2 3\n");
    buildWith("location='a.obj' format='OSB'", "materialRef='m'");
    m_structure->realizeNode(2);
    std::vector<std::string> names;
    for (const osg::MaterialPtr& material : znScenegraph::getMaterialPool()->getMaterials())
        names.push_back(osg::getName(material));
    EXPECT_THAT(names, ElementsAre("red", "steel"));
}

TEST_F(RealizeRecordTest, TheHostIsAskedInThisOrder)
{
    buildWith("location='a.jt' format='JT'", "materialRef='m'");
    ASSERT_FALSE(m_session.settings().set(QStringLiteral("import.uberMaterials"), QStringLiteral("on")));
    const std::string top = "node " + std::to_string(record(2).getMaterialNode()->getContainerId()) + " 'red'";
    const std::string root = "node " + std::to_string(m_session.sceneRoot()->getContainerId()) + " 'Scene'";
    std::vector<std::string> calls;
    const zn::CallTrace trace([&calls](const std::string& call) { calls.push_back(call); });
    m_structure->realizeNode(2);
    EXPECT_THAT(calls,
                ElementsAre("znFileIO::getConvertToUberMaterials()", "znFileIO::convertToUberMaterials(" + top + ")",
                            "znOpenSGUtils::getRoot()", "znMaterials::findMaterialPool(" + root + ", false, true, 0)"));
    EXPECT_EQ(materials(),
              "red ambient 0 0 0 diffuse 1 0 0 emission 0 0 0 specular 0 0 0 transparency 0 shininess 0\n");
}

TEST_F(RealizeRecordTest, UberMaterialsAreMadeOfTheCopyAndNotOfTheLeaf)
{
    buildWith("location='a.jt' format='JT'", "materialRef='m'");
    ASSERT_FALSE(m_session.settings().set(QStringLiteral("import.uberMaterials"), QStringLiteral("on")));
    m_structure->realizeNode(2);
    const osg::MaterialPoolPtr pool = znScenegraph::getMaterialPool();
    ASSERT_EQ(pool->getMaterials().size(), 1U);
    EXPECT_STREQ(pool->getMaterials()[0]->getType().getName(), "UberMaterial");
}

TEST_F(RealizeRecordTest, OnlyTheInsertionStandsInNoBracket)
{
    buildWith("location='a.jt' format='JT'", "materialRef='m'");
    const osg::EditAudit audit;
    m_structure->realizeNode(2);
    EXPECT_THAT(audit.unbracketed(), ElementsAre(osg::EditAudit::Record{m_structure->getSceneNode(2)->getContainerId(),
                                                                        "Node", osg::Node::ChildrenFieldMask}));
    EXPECT_THAT(audit.brackets(), testing::Contains(osg::EditAudit::Record{
                                      record(2).getMaterialNode()->getContainerId(), "Node", 0xFFFFFFFF}));
    EXPECT_EQ(audit.openBrackets(), 0U);
}

} // namespace

} // namespace HB::Visualization
