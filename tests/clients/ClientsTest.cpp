// What other programs make of written GLB files.

#include "tests/clients/Clients.h"

#include "host/OSGSystem/SwitchMaterial.h"
#include "scene/MatrixMath.h"
#include "scene/VariantTable.h"
#include "tests/files/glb/GlbTest.h"
#include "tests/files/glb/levels/LevelShapes.h"
#include "tests/support/BuiltInReading.h"

#include <QProcess>

#include <gmock/gmock.h>

namespace
{

using nlohmann::json;

QString text(const char* utf8)
{
    return QString::fromUtf8(utf8);
}

/// A plate that is red by day and green by night, and above it a box that stands there by night only.
class ClientsTest : public GlbTest
{
protected:
    ClientsTest()
    {
        options.fold = true;
        const osg::SwitchMaterialPtr paint = osg::SwitchMaterialBase::create();
        osg::setName(paint, "paint");
        paint->addMaterial(colored("red", {1, 0, 0}));
        paint->addMaterial(colored("green", {0, 1, 0}));
        add(files::makeNode("plate", geometry("plate", block({200, 200, 20}), paint)));
        const osg::RefPtr<osg::GeometryPtr> core(
            geometry("bolt", block({20, 20, 50}), colored("steel", {0.5f, 0.5f, 0.5f})));
        for (const char* name : {"bolt", "bolt"}) {
            const float x = root.get()->getNChildren() == 1 ? -60.0f : 40.0f;
            const osg::NodePtr bolt = add(files::makeTransform(name, osg::composed({{x, 0, 20}, {}, {1, 1, 1}, {}})));
            osg::addChild(bolt, files::makeNode("bolt", core.get()));
        }
        const osg::NodePtr box =
            add(files::makeTransform("box", osg::composed({{0, 30, 60}, {0, 0, 1, 0}, {1, 1, 1}, {}})));
        osg::addChild(box, files::makeNode("box", geometry("box", block({80, 80, 80}), colored("blue", {0, 0, 1}))));
        box->setActive(false);
        osg::VariantTable table;
        table.groups = {"light"};
        table.sets = {{"day", "light", "", {}, {{"paint", "red"}}, {{{3}, "!Disable"}}},
                      {"night", "light", "moon", {}, {{"paint", "green"}}, {{{3}, "!Enable"}}}};
        root.get()->addAttachment(osg::VariantAttachment::create(table));
    }

    static osg::MaterialPtr colored(const char* name, const osg::Color3f& color)
    {
        files::MaterialLook look;
        look.diffuse = color;
        return files::makeMaterial(name, look);
    }
    /// With its lower left corner in the origin, and normals, without which viewers draw it flat.
    static osg::Mesh block(const osg::Vec3f& size)
    {
        std::vector<osg::Vec3f> positions;
        std::vector<std::uint32_t> triangles;
        for (int corner = 0; corner < 8; ++corner)
            positions.push_back({corner & 1 ? size.x : 0, corner & 2 ? size.y : 0, corner & 4 ? size.z : 0});
        osg::Mesh mesh;
        mesh.positions = positions;
        mesh.triangles = std::vector<std::uint32_t>{0, 2, 1, 1, 2, 3, 4, 5, 6, 5, 7, 6, 0, 1, 4, 1, 5, 4,
                                                    2, 6, 3, 3, 6, 7, 0, 4, 2, 2, 4, 6, 1, 3, 5, 3, 7, 5};
        return mesh;
    }

    QString file()
    {
        (void)written();
        return pathOf(QString::fromUtf8("Größe 大小.glb"));
    }
};

class EachClientTest : public ClientsTest, public testing::WithParamInterface<const char*>
{
protected:
    void SetUp() override
    {
        ClientsTest::SetUp();
        if (!clients::isInstalled(text(GetParam())))
            GTEST_SKIP() << GetParam() << " is not installed";
    }
};

TEST_P(EachClientTest, SeesPartsWhereTheyAreAndNoHiddenOne)
{
    for (const bool scaleIntoVertices : {false, true}) {
        options.scaleIntoVertices = scaleIntoVertices;
        const json seen = clients::seen(text(GetParam()), file());
        ASSERT_TRUE(seen.is_object());
        EXPECT_EQ(seen["meshObjects"], 4);
        EXPECT_EQ(seen["triangles"], 48);
        EXPECT_EQ(seen["meshes"], 3) << "bolts do not share theirs";
        const std::vector<double> expected{-0.06, 0, -0.2, 0.2, 0.07, 0};
        for (std::size_t i = 0; i < expected.size(); ++i)
            EXPECT_NEAR(seen["box"][i].get<double>(), expected[i], 2e-6) << i;
    }
}

TEST_P(EachClientTest, DrawsTheHiddenOneWhereItIsKept)
{
    options.hidden = files::glb::Hidden::Keep;
    const json seen = clients::seen(text(GetParam()), file());
    ASSERT_TRUE(seen.is_object());
    EXPECT_NEAR(seen["box"][4].get<double>(), 0.14, 2e-6);
}

/// Whoever does not know levels of detail draws the finest one, but for Blender, which draws nodes of no scene.
TEST_P(EachClientTest, SeesNoLevelBesideTheFinestUnlessItDrawsNodesOfNoScene)
{
    add(files::makeNode("ball", geometry("ball", levelshapes::ball(20, 50))));
    options.levels.shares = {0.5, 0.1};
    const QString leveled = file();
    ASSERT_EQ(result->levels.size(), 3u);
    const json seen = clients::seen(text(GetParam()), leveled);
    ASSERT_TRUE(seen.is_object());
    const bool drawsAll = text(GetParam()) == text("blender");
    EXPECT_EQ(seen["meshObjects"], drawsAll ? 7 : 5);
    const std::uint64_t blocks = 3 * 12; // which have no lower levels, and are told in each
    const std::uint64_t below = result->levels[1].triangles + result->levels[2].triangles - 2 * blocks;
    EXPECT_EQ(seen["triangles"], 48 + 1520 + (drawsAll ? below : 0));
}

INSTANTIATE_TEST_SUITE_P(, EachClientTest, testing::Values("blender", "three", "gltf-transform", "gltfpack"));

class RewritingClientTest : public EachClientTest
{
};

TEST_P(RewritingClientTest, KeepsTheVariantSets)
{
    const QString again = pathOf(QStringLiteral("again.glb"));
    ASSERT_TRUE(clients::optimize(text(GetParam()), file(), again));
    EXPECT_EQ(GlbFile(again).json["asset"]["extras"]["variantSets"],
              json::parse(R"([{"group":"light","name":"day"},{"group":"light","name":"night","viewpoint":"moon"}])"));
    const files::ReadResult read = readScene(again);
    ASSERT_TRUE(read) << read.error().toString().toStdString();
    const osg::RefPtr<osg::NodePtr> tree(read.value());
    const auto variants = osg::VariantAttachment::of(tree.get());
    ASSERT_TRUE(variants);
    ASSERT_EQ(variants->table().sets.size(), 2u);
    EXPECT_EQ(variants->table().sets[1].viewpoint, "moon");
    EXPECT_EQ(variants->table().sets[0].materials.size() + variants->table().sets[1].materials.size(), 2u);
}

INSTANTIATE_TEST_SUITE_P(, RewritingClientTest, testing::Values("gltf-transform", "gltfpack"));

TEST_F(ClientsTest, ABrowserSwitchesTheSetsInThePageOfTheExample)
{
    if (!clients::isInstalled(text("chromium")))
        GTEST_SKIP() << "chromium or the package three is not installed";
    const json drawn = clients::drawn(file());
    ASSERT_TRUE(drawn.is_object());
    EXPECT_GT(drawn[""]["red"], 10000);
    EXPECT_EQ(drawn[""]["blue"], 0) << "the hidden box is drawn";
    EXPECT_EQ(drawn["day"], drawn[""]);
    EXPECT_EQ(drawn["night"]["red"], 0);
    EXPECT_GT(drawn["night"]["green"], 5000);
    EXPECT_GT(drawn["night"]["blue"], 2000);
}

TEST_F(ClientsTest, BlenderHasEdgesAsLooseOnesAndNormalsAsTheyAre)
{
    if (!clients::isInstalled(text("blender")))
        GTEST_SKIP() << "Blender is not installed";
    osg::Mesh bent = triangle();
    bent.normals = std::vector<osg::Vec3f>{{0, 0.6f, 0.8f}, {0, 0, 1}, {0.6f, 0, 0.8f}};
    add(files::makeNode("bent", geometry("bent", bent)));
    const json plain = clients::seen(text("blender"), file());
    ASSERT_TRUE(plain.is_object());
    EXPECT_EQ(plain["looseEdges"], 0);
    EXPECT_EQ(plain["customNormals"], 1);
    options.edges = true;
    const json edges = clients::seen(text("blender"), file());
    EXPECT_EQ(edges["looseEdges"], 3 * 12 + 3) << "three different blocks, and a triangle";
    EXPECT_EQ(edges["customNormals"], 1);
    EXPECT_EQ(edges["triangles"], plain["triangles"]);
}

/// Twelve files, as znimport writes them: what clients see agrees, and the table of docs/glb.md is printed.
class ClientsCorpusTest : public testing::TestWithParam<const char*>
{
};

TEST_P(ClientsCorpusTest, ClientsAgree)
{
    const QString input = qEnvironmentVariable("ZN_CORPUS") + text("/") + text(GetParam());
    if (!QFile::exists(input))
        GTEST_SKIP() << "ZN_CORPUS names no folder with " << GetParam() << " in it";
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("out.glb"));
    QProcess znimport;
    znimport.start(QStringLiteral(ZNIMPORT), {input, QStringLiteral("-o"), file});
    ASSERT_TRUE(znimport.waitForFinished(600'000) && QFile::exists(file));
    std::string row = "| " + std::string(GetParam()) + " | " + std::to_string(QFileInfo(file).size() / 1024) + " kB |";
    json first;
    for (const QString& client : clients::names()) {
        if (!clients::isInstalled(client))
            continue;
        const json seen = clients::seen(client, file);
        ASSERT_TRUE(seen.is_object()) << client.toStdString();
        row += ' ' + seen["objects"].dump() + " / " + seen["meshObjects"].dump() + " / " + seen["meshes"].dump() + " |";
        if (client == QLatin1String("blender"))
            row += ' ' + seen["numbered"].dump() + " |";
        ASSERT_TRUE(seen["box"][0].is_number()) << client.toStdString() << " has nothing to draw";
        if (first.is_null())
            first = seen["box"];
        double size = 0;
        for (std::size_t i = 0; i < 3; ++i)
            size = std::max(size, first[i + 3].get<double>() - first[i].get<double>());
        for (std::size_t i = 0; i < 6; ++i)
            EXPECT_NEAR(seen["box"][i].get<double>(), first[i].get<double>(), 2e-6 + size * 1e-6)
                << client.toStdString();
    }
    if (first.is_null())
        GTEST_SKIP() << "no client is installed";
    std::printf("%s\n", row.c_str());
}

INSTANTIATE_TEST_SUITE_P(, ClientsCorpusTest,
                         testing::Values("step/as1-oc-214.stp", "step/io1-cm-214.stp", "step/MyParts.step",
                                         "jt/CoffeeMaker.jt", "jt/fishing_reel.jt", "jt/butterflyvalve_v9.5.jt",
                                         "plmxml-real/pdm_2007_car.xml", "obj/spider.obj", "wrl/ESP32-WROVER-E.wrl",
                                         "obj/hundred_cubes.obj", "gltf/DamagedHelmet.glb",
                                         "gltf/OrientationTest.glb"));

} // namespace
