// The sample document of examples/plmxml through the real converter, whole and with parts that are not as they should
// be.

#include "cad/visualization/PLMXMLProductStructure.h"
#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Geometry.h"
#include "host/OSGSystem/MaterialGroup.h"
#include "host/OSGSystem/SimpleMaterial.h"
#include "host/OSGSystem/Transform.h"
#include "host/znOpenSGExt/ExtReference.h"
#include "importer/Importer.h"
#include "importer/SceneText.h"
#include "scene/Bounds.h"
#include "tests/standalone/session/SessionTest.h"
#include "tests/support/IgesText.h"

#include <QDirIterator>
#include <QEventLoop>
#include <QFileInfo>
#include <QTimer>

#include <map>
#include <set>

using testing::ElementsAre;
using testing::FloatNear;
using testing::IsEmpty;
using testing::Pair;
using testing::UnorderedElementsAre;

namespace
{

using Color = std::array<float, 3>;

class PlmxmlExampleTest : public SessionTest
{
protected:
    PlmxmlExampleTest()
    {
        EXPECT_FALSE(m_session.settings().set(QStringLiteral("converter.program"), QString::fromUtf8(ZN_PTXCONVERT)));
        EXPECT_FALSE(m_session.settings().set(QStringLiteral("processes.most"), QStringLiteral("2")));
        EXPECT_FALSE(m_session.settings().set(QStringLiteral("scene.fold"), QStringLiteral("off")));
        copyExample();
    }
    void TearDown() override
    {
        m_result.node = osg::NodePtr();
        SessionTest::TearDown();
    }

    zn::ImportResult& import()
    {
        zn::Importer importer(m_session);
        QEventLoop loop;
        QObject::connect(&importer, &zn::Importer::finished, &loop, [&](const zn::ImportResult& end) {
            m_result = end;
            loop.quit();
        });
        QTimer::singleShot(110000, &loop, &QEventLoop::quit);
        importer.import({document()});
        loop.exec();
        return m_result;
    }

    QString document() const { return path(QStringLiteral("cart.plmxml")); }
    QString part(const char* name) const { return path(QStringLiteral("parts/") + QString::fromUtf8(name)); }

    QByteArray bytesOf(const QString& file) const
    {
        QFile source(file);
        EXPECT_TRUE(source.open(QIODevice::ReadOnly)) << file.toStdString();
        return source.readAll();
    }
    void replaceInDocument(const char* what, const char* by) const
    {
        QByteArray text = bytesOf(document());
        ASSERT_TRUE(text.contains(what)) << what;
        write(QStringLiteral("cart.plmxml"), text.replace(what, by));
    }

    /// Names, placements and files down to the references to part files.
    static void addOutline(const osg::NodePtr& node, const std::string& indent, std::string& text)
    {
        const auto reference = osg::fcCast<osg::ExtReference>(node->getCore());
        const auto transform = osg::fcCast<osg::Transform>(node->getCore());
        text += indent + (nameOf(node).empty() ? "-" : nameOf(node));
        if (osg::fcCast<osg::MaterialGroup>(node->getCore()))
            text += " (material)";
        if (reference)
            text += " (file)";
        else if (transform && !transform->isIdentity())
            text += " (moved)";
        text += "\n";
        for (unsigned i = 0; i < node->getNChildren() && (!reference || indent.empty()); ++i)
            addOutline(node->getChild(i), indent + "  ", text);
    }
    static std::string outlineOf(const osg::NodePtr& node)
    {
        std::string text;
        addOutline(node, "", text);
        return text;
    }

    /// All nodes of this name, in tree order.
    std::vector<osg::NodePtr> nodesOf(const char* name) const
    {
        std::vector<osg::NodePtr> nodes;
        osg::traverse(m_result.node, [&](const osg::NodePtr& node) {
            if (nameOf(node) == name)
                nodes.push_back(node);
            return osg::Action::Continue;
        });
        return nodes;
    }

    /// The diffuse colour of each geometry below the nodes of this name.
    std::set<Color> colorsBelow(const char* name) const
    {
        std::set<Color> colors;
        for (const osg::NodePtr& top : nodesOf(name))
            osg::traverse(top, [&](const osg::NodePtr& node) {
                const auto geometry = osg::fcCast<osg::Geometry>(node->getCore());
                const auto material =
                    osg::fcCast<osg::SimpleMaterial>(geometry ? geometry->getMaterial() : osg::MaterialPtr());
                if (material) {
                    const auto& color = material->getDiffuse();
                    colors.insert({color.red, color.green, color.blue});
                }
                return osg::Action::Continue;
            });
        return colors;
    }

    osg::SimpleMaterialPtr groupMaterial(const char* name) const
    {
        const std::vector<osg::NodePtr> nodes = nodesOf(name);
        EXPECT_EQ(nodes.size(), 2u) << name; // the loader's, and the one over the part
        const auto group = osg::fcCast<osg::MaterialGroup>(nodes.front()->getCore());
        return osg::fcCast<osg::SimpleMaterial>(group ? group->getMaterial() : osg::MaterialPtr());
    }

    static void expectNear(const osg::Matrix& matrix, const std::array<double, 16>& expected)
    {
        for (unsigned i = 0; i < 16; ++i)
            EXPECT_NEAR(matrix[i], expected[i], 1e-3) << "element " << i;
    }

    QStringList missing() const
    {
        QStringList texts;
        for (const zn::MissingPart& lost : m_result.missing)
            texts << QFileInfo(lost.file).fileName() + QStringLiteral(": ") + lost.reason + QStringLiteral(" [") +
                         lost.instances.join(QStringLiteral("] [")) + QLatin1Char(']');
        texts.sort();
        return texts;
    }

    zn::ImportResult m_result;

private:
    void copyExample() const
    {
        const QDir example(QString::fromUtf8(EXAMPLE_PLMXML));
        EXPECT_TRUE(QDir().mkpath(path(QStringLiteral("parts"))));
        EXPECT_TRUE(QFile::copy(example.filePath(QStringLiteral("cart.plmxml")), document()));
        for (const QFileInfo& file : QDir(example.filePath(QStringLiteral("parts"))).entryInfoList(QDir::Files))
            EXPECT_TRUE(QFile::copy(file.filePath(), path(QStringLiteral("parts/") + file.fileName())));
    }
};

TEST_F(PlmxmlExampleTest, TheTreeIsThatOfTheProduct)
{
    ASSERT_EQ(import().state, znCADFileTypes::JobSucceeded) << m_result.error.toStdString();
    EXPECT_THAT(missing(), IsEmpty());
    EXPECT_EQ(outlineOf(m_result.node), "cart (file)\n"
                                        "  -\n"
                                        "    Hand cart\n"
                                        "      Beech (material)\n"
                                        "      Frame\n"
                                        "        frame.stp (file)\n"
                                        "      Front axle (moved)\n"
                                        "        Axle\n"
                                        "          Rod\n"
                                        "            rod.stp (file)\n"
                                        "          Left wheel (moved)\n"
                                        "            Wheel\n"
                                        "              Wheel-geom\n"
                                        "                wheel (file)\n"
                                        "          Right wheel (moved)\n"
                                        "            Wheel\n"
                                        "              Wheel-geom\n"
                                        "                wheel (file)\n"
                                        "      Rear axle (moved)\n"
                                        "        Axle\n"
                                        "          Rod\n"
                                        "            rod.stp (file)\n"
                                        "          Left wheel (moved)\n"
                                        "            Wheel\n"
                                        "              Wheel-geom\n"
                                        "                wheel (file)\n"
                                        "          Right wheel (moved)\n"
                                        "            Wheel\n"
                                        "              Wheel-geom\n"
                                        "                wheel (file)\n"
                                        "      Crate 1 (moved)\n"
                                        "        Crate\n"
                                        "          Crate-geom\n"
                                        "            oak%20crate (file)\n"
                                        "      Crate 2 (moved)\n"
                                        "        Signal red (material)\n"
                                        "        Crate\n"
                                        "          Crate-geom\n"
                                        "            oak%20crate (file)\n");
}

TEST_F(PlmxmlExampleTest, PartsStandWhereInstancesAndOccurrencesPutThem)
{
    ASSERT_EQ(import().state, znCADFileTypes::JobSucceeded);
    const std::vector<osg::NodePtr> wheels = nodesOf("Hub");
    ASSERT_EQ(wheels.size(), 4u);
    expectNear(osg::worldMatrix(wheels[0]), {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 400, 330, 0, 1});
    expectNear(osg::worldMatrix(wheels[1]), {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 400, -330, 0, 1});
    expectNear(osg::worldMatrix(wheels[2]), {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, -400, 330, 0, 1});
    // The view takes this one off: its axis, y, points up.
    expectNear(osg::worldMatrix(wheels[3]), {1, 0, 0, 0, 0, 0, 1, 0, 0, -1, 0, 0, -300, 0, 370, 1});
    const std::vector<osg::NodePtr> crates = nodesOf("iron");
    ASSERT_EQ(crates.size(), 2u);
    expectNear(osg::worldMatrix(crates[0]), {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 250, 0, 80, 1});
    expectNear(osg::worldMatrix(crates[1]), {0.866025, 0.5, 0, 0, -0.5, 0.866025, 0, 0, 0, 0, 1, 0, -300, 0, 80, 1});
}

TEST_F(PlmxmlExampleTest, GeometryIsAsLargeAsInThePartFilesAndShared)
{
    ASSERT_EQ(import().state, znCADFileTypes::JobSucceeded);
    const osg::Box box = osg::worldBounds(m_result.node);
    EXPECT_NEAR(box.low[0], -600, 0.1);
    EXPECT_NEAR(box.high[0], 600, 0.1);
    EXPECT_NEAR(box.low[1], -370, 0.1);
    EXPECT_NEAR(box.high[1], 370, 0.1);
    EXPECT_NEAR(box.low[2], -200, 1);
    EXPECT_NEAR(box.high[2], 830, 0.1);
    const zn::SceneCounts counts = zn::countScene(m_result.node);
    // Two of the frame, one rod, tyre, hub and spoke, two of the crate.
    EXPECT_EQ(counts.geometries, 8u);
    // The rod twice, a wheel of eight pieces four times, the crate twice.
    EXPECT_EQ(counts.placedGeometries, 2u + 2u + 4u * 8u + 2u * 2u);
    // Five boxes and an octagonal deck; sixteen-sided rods; the rest is the meshes' own.
    EXPECT_EQ(counts.placedTriangles, (5u * 12u + 28u) + 2u * 60u + 4u * (788u + 128u + 6u * 12u) + 2u * 216u);
}

TEST_F(PlmxmlExampleTest, ColorsAreThoseOfThePartFiles)
{
    ASSERT_EQ(import().state, znCADFileTypes::JobSucceeded);
    const auto near = [](float red, float green, float blue) {
        return ElementsAre(FloatNear(red, 0.003f), FloatNear(green, 0.003f), FloatNear(blue, 0.003f));
    };
    EXPECT_THAT(colorsBelow("frame.stp"), UnorderedElementsAre(near(0.72f, 0.52f, 0.3f), near(0.25f, 0.38f, 0.5f)));
    EXPECT_THAT(colorsBelow("rod.stp"), ElementsAre(near(0.6f, 0.62f, 0.65f)));
    EXPECT_THAT(colorsBelow("Wheel-geom"),
                UnorderedElementsAre(near(0.1f, 0.1f, 0.11f), near(0.8f, 0.55f, 0.15f), near(0.75f, 0.16f, 0.12f)));
    EXPECT_THAT(colorsBelow("Crate-geom"), UnorderedElementsAre(near(0.62f, 0.43f, 0.22f), near(0.2f, 0.2f, 0.22f)));
}

TEST_F(PlmxmlExampleTest, MaterialsOfTheDocumentStandBesideTheirParts)
{
    ASSERT_EQ(import().state, znCADFileTypes::JobSucceeded);
    const osg::SimpleMaterialPtr beech = groupMaterial("Beech");
    ASSERT_TRUE(beech);
    EXPECT_EQ(beech->getDiffuse(), (osg::Color3f{0.72f, 0.52f, 0.3f}));
    EXPECT_EQ(beech->getSpecular(), (osg::Color3f{0.1f, 0.1f, 0.1f}));
    EXPECT_EQ(beech->getShininess(), 8);
    // In place of the instance's own.
    const osg::SimpleMaterialPtr red = groupMaterial("Signal red");
    ASSERT_TRUE(red);
    EXPECT_EQ(red->getAmbient(), (osg::Color3f{0.1f, 0, 0}));
    EXPECT_EQ(red->getDiffuse(), (osg::Color3f{0.8f, 0.05f, 0.02f}));
    EXPECT_EQ(red->getTransparency(), 0.25f);
    EXPECT_THAT(nodesOf("Oak"), IsEmpty());
}

/// An occurrence of an assembly is stronger than the instance of a part in it, which is stronger than that of an
/// assembly.
TEST_F(PlmxmlExampleTest, TheNearestMaterialHoldsUnlessAnOccurrenceGivesOne)
{
    replaceInDocument("name=\"Front axle\" partRef=\"#axle\"",
                      "name=\"Front axle\" partRef=\"#axle\" materialRef=\"#beech\"");
    replaceInDocument("name=\"Rod\" partRef=\"#rod\"", "name=\"Rod\" partRef=\"#rod\" materialRef=\"#oak\"");
    replaceInDocument("<Occurrence id=\"crate-red\"", "<Occurrence id=\"axle-red\" instanceRefs=\"cart-1 axle-rear\" "
                                                      "materialRef=\"#red\"/><Occurrence id=\"crate-red\"");
    ASSERT_EQ(import().state, znCADFileTypes::JobSucceeded);
    std::vector<std::string> materials;
    for (const osg::NodePtr& rod : nodesOf("rod.stp"))
        materials.push_back(osg::getName(rod->getChild(0)));
    EXPECT_THAT(materials, ElementsAre("Oak", "Signal red"));
    for (const osg::NodePtr& wheel : nodesOf("wheel"))
        if (wheel->getNChildren() == 1)
            materials.push_back(osg::getName(wheel->getChild(0)));
    EXPECT_THAT(std::vector<std::string>(materials.begin() + 2, materials.end()),
                testing::IsSupersetOf({"Beech", "Signal red"}));
}

TEST_F(PlmxmlExampleTest, UserDataIsReadFromTheProductStructure)
{
    HB::Visualization::PLMXMLProductStructure structure;
    ASSERT_TRUE(structure.loadDocument(document().toStdString()));
    const osg::RefPtr<osg::NodePtr> tree(structure.createScene());
    std::set<std::string> texts;
    for (std::uint32_t id = 0; id < structure.getNodeCount(); ++id)
        texts.insert(structure.getUserDataText(id));
    EXPECT_THAT(texts, UnorderedElementsAre(
                           "",
                           "<UserData><UserValue type=\"string\" title=\"Project\" value=\"Garden 7\"></UserValue>"
                           "<UserValue type=\"real\"title=\"Payload\" value=\"150\"></UserValue></UserData>",
                           "<UserData><UserValue type=\"string\" title=\"Tyre\" value=\"400 x 60\"></UserValue>"
                           "<UserValue type=\"int\"title=\"Spokes\" value=\"6\"></UserValue></UserData>"));
}

TEST_F(PlmxmlExampleTest, MissingPartFilesLeaveTheOthersAndAreNamedWithTheirPlaces)
{
    ASSERT_TRUE(QFile::remove(part("rod.stp")));
    ASSERT_TRUE(QFile::remove(part("oak crate.osb")));
    EXPECT_EQ(import().state, znCADFileTypes::JobPartial);
    const QString cart = QStringLiteral("Hand cart/");
    EXPECT_THAT(missing(),
                ElementsAre(QStringLiteral("oak crate.osb: there is no such file [%1Crate 1/Crate/Crate-geom] "
                                           "[%1Crate 2/Crate/Crate-geom]")
                                .arg(cart),
                            QStringLiteral("rod.stp: there is no such file [%1Front axle/Axle/Rod] "
                                           "[%1Rear axle/Axle/Rod]")
                                .arg(cart)));
    EXPECT_EQ(nodesOf("Hub").size(), 4u);
    EXPECT_EQ(colorsBelow("frame.stp").size(), 2u);
}

TEST_F(PlmxmlExampleTest, DamagedPartFilesLeaveTheOthersAndAreNamedWithTheirReasons)
{
    write(QStringLiteral("parts/rod.stp"), bytesOf(part("rod.stp")).left(3000));
    write(QStringLiteral("parts/wheel.wrl"), "#VRML V2.0 utf8\nShape { geometry Box { size 1 2\n");
    write(QStringLiteral("parts/oak crate.osb"), bytesOf(part("oak crate.osb")).left(1000));
    EXPECT_EQ(import().state, znCADFileTypes::JobPartial);
    const QStringList lost = missing();
    ASSERT_EQ(lost.size(), 3);
    EXPECT_TRUE(lost[0].startsWith(QStringLiteral("oak crate.osb: The file has 1000 bytes; its header says 5216")))
        << lost[0].toStdString();
    EXPECT_TRUE(lost[1].startsWith(QStringLiteral("rod.stp: The file is damaged."))) << lost[1].toStdString();
    EXPECT_TRUE(lost[2].startsWith(QStringLiteral("wheel.wrl: "))) << lost[2].toStdString();
    EXPECT_TRUE(lost[2].contains(QStringLiteral("(line 3, column 1)"))) << lost[2].toStdString();
    EXPECT_EQ(m_result.missing[0].instances.size() + m_result.missing[1].instances.size() +
                  m_result.missing[2].instances.size(),
              8);
    EXPECT_EQ(colorsBelow("frame.stp").size(), 2u);
}

TEST_F(PlmxmlExampleTest, AFolderInPlaceOfAPartFileIsMissing)
{
    ASSERT_TRUE(QFile::remove(part("frame.stp")) && QDir().mkpath(part("frame.stp")));
    ASSERT_TRUE(QFile::remove(part("wheel.wrl")) && QDir().mkpath(part("wheel.wrl")));
    EXPECT_EQ(import().state, znCADFileTypes::JobPartial);
    const QStringList lost = missing();
    ASSERT_EQ(lost.size(), 2);
    EXPECT_TRUE(lost[0].startsWith(QStringLiteral("frame.stp: "))) << lost[0].toStdString();
    EXPECT_TRUE(lost[1].startsWith(QStringLiteral("wheel.wrl: "))) << lost[1].toStdString();
    EXPECT_EQ(colorsBelow("Crate-geom").size(), 2u);
}

TEST_F(PlmxmlExampleTest, APartFileThatMayNotBeReadIsMissing)
{
    ASSERT_TRUE(QFile::setPermissions(part("frame.stp"), {}));
    if (QFile file(part("frame.stp")); file.open(QIODevice::ReadOnly))
        GTEST_SKIP() << "this user may read everything";
    EXPECT_EQ(import().state, znCADFileTypes::JobPartial);
    ASSERT_EQ(missing().size(), 1);
    EXPECT_TRUE(missing()[0].startsWith(QStringLiteral("frame.stp: "))) << missing()[0].toStdString();
}

TEST_F(PlmxmlExampleTest, SolidPartsMayBeInAnyFormat)
{
    ptxtest::IgesText patch;
    patch.patch({0, 0, 0}, {30, 0, 0}, {0, 20, 0}, {30, 20, 0}, 2);
    write(QStringLiteral("parts/frame.igs"), QByteArray::fromStdString(patch.text()));
    write(QStringLiteral("parts/rod.STL"), "solid rod\nfacet normal 0 0 1\nouter loop\nvertex 0 0 0\nvertex 5 0 0\n"
                                           "vertex 0 7 0\nendloop\nendfacet\nendsolid rod\n");
    replaceInDocument("parts/frame.stp", "parts/frame.igs");
    replaceInDocument("parts/rod.stp", "parts/rod.STL");
    EXPECT_EQ(import().state, znCADFileTypes::JobSucceeded) << missing().join(QLatin1Char('\n')).toStdString();
    const osg::Box frame = osg::worldBounds(nodesOf("Frame").front());
    EXPECT_NEAR(frame.size(0), 30, 1e-3);
    EXPECT_NEAR(frame.size(1), 20, 1e-3);
    const std::vector<osg::NodePtr> rods = nodesOf("Rod");
    ASSERT_EQ(rods.size(), 2u);
    EXPECT_NEAR(osg::worldBounds(rods[0]).low[0], 400, 1e-3);
    EXPECT_NEAR(osg::worldBounds(rods[1]).low[0], -400, 1e-3);
    EXPECT_NEAR(osg::worldBounds(rods[1]).high[1], 7, 1e-3);
}

TEST_F(PlmxmlExampleTest, LocationsMayBeEscapedOrNotAndHoldAnyLetters)
{
    ASSERT_TRUE(QDir().mkpath(path(QString::fromUtf8("Räder & mehr"))));
    ASSERT_TRUE(QFile::rename(part("wheel.wrl"), path(QString::fromUtf8("Räder & mehr/Großes Rad 100%.wrl"))));
    ASSERT_TRUE(QFile::rename(part("frame.stp"), part("Träger 'a' $b.stp")));
    ASSERT_TRUE(QFile::rename(part("rod.stp"), part("棒 1.stp")));
    replaceInDocument("parts/wheel.wrl", "R%C3%A4der%20&amp;%20mehr/Gro%c3%9fes%20Rad%20100%25.wrl");
    replaceInDocument("parts/frame.stp", "parts/Träger 'a' $b.stp");
    replaceInDocument("parts/rod.stp", "parts/%E6%A3%92 1.stp");
    replaceInDocument("parts/oak%20crate.osb", "parts/../parts/oak crate.osb");
    EXPECT_EQ(import().state, znCADFileTypes::JobSucceeded) << missing().join(QLatin1Char('\n')).toStdString();
    EXPECT_EQ(nodesOf("Hub").size(), 4u);
    EXPECT_EQ(zn::countScene(m_result.node).placedGeometries, 40u);
}

} // namespace
