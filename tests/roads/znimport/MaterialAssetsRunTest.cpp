// Material assets on the whole road of a converted file.

#include "files/scenefile/SceneFile.h"
#include "host/znOpenSGExt/ExtReference.h"
#include "tests/files/glb/GlbFile.h"
#include "tests/gltf-validator/GltfValidator.h"
#include "tests/roads/znimport/ToolRun.h"
#include "tests/support/BookmarkScene.h"

namespace
{

class MaterialAssetsRunTest : public ToolRun
{
protected:
    /// A CAD file of two boxes, of the dark materials "Brushed" and "Plain".
    QString writeBoxes() const
    {
        const osg::ExtReferencePtr core = osg::ExtReferenceBase::create();
        core->setState(2);
        const osg::RefPtr<osg::NodePtr> root(osg::makeNodeFor(core));
        for (const char* name : {"Brushed", "Plain"})
            root->addChild(bookmarkscene::part(name, bookmarkscene::box({0, 0, 0}, {10, 20, 30}),
                                               bookmarkscene::paint(name, {0, 0, 0})));
        EXPECT_TRUE(osg::scenefile::writeSceneFile(root, path("made.osb")));
        return writeCad("boxes.stp", path("made.osb"));
    }
};

TEST_F(MaterialAssetsRunTest, AssetsOfAFolderTakeThePlacesOfMaterialsOfTheirNames)
{
    ASSERT_TRUE(QDir().mkpath(path("assets")));
    write("assets/steel.gltf",
          R"({"asset":{"version":"2.0"},"materials":[{"name":"own","pbrMetallicRoughness":)"
          R"({"baseColorFactor":[1,0,0,1],"metallicFactor":0},"extras":{"uuid":"u1","name":"Brushed"}}]})");
    const Ending ending = znimport(
        withScriptedChild({writeBoxes(), text("--material-assets"), path("assets"), text("-o"), path("out.glb")}));
    ASSERT_EQ(ending.exitCode, 0) << ending.errors.toStdString();
    const nlohmann::json materials = GlbFile(path("out.glb")).json["materials"];
    ASSERT_EQ(materials.size(), 2u);
    EXPECT_EQ(materials[0]["name"], "Brushed");
    EXPECT_EQ(materials[0]["pbrMetallicRoughness"]["baseColorFactor"].get<std::vector<float>>(),
              (std::vector<float>{1, 0, 0, 1}));
    EXPECT_EQ(materials[1]["name"], "Plain");
    EXPECT_EQ(materials[1]["pbrMetallicRoughness"]["baseColorFactor"].get<std::vector<float>>(),
              (std::vector<float>{0, 0, 0, 1}));
}

/// Boxes of the file are named "Brushed" and "Plain" as their materials are.
class MaterialTableRunTest : public MaterialAssetsRunTest
{
protected:
    void SetUp() override
    {
        MaterialAssetsRunTest::SetUp();
        ASSERT_TRUE(QDir().mkpath(path("assets")));
        write("assets/some.gltf",
              R"({"asset":{"version":"2.0"},"materials":[)"
              R"({"name":"Brushed","pbrMetallicRoughness":{"baseColorFactor":[1,0,0,1]},"extras":{"uuid":"u1"}},)"
              R"({"name":"oak","pbrMetallicRoughness":{"baseColorFactor":[0,1,0,1]},"extras":{"uuid":"u2"}}]})");
    }

    Ending run(const QString& input)
    {
        return znimport(withScriptedChild({input, text("--material-assets"), path("assets"), text("-o"),
                                           path("out.glb"), text("--report"), path("report.json")}));
    }

    /// Names of the materials of the meshes in the output, in their order.
    std::vector<std::string> materials() const
    {
        const nlohmann::json json = GlbFile(path("out.glb")).json;
        std::vector<std::string> names;
        for (const auto& mesh : json["meshes"])
            for (const auto& primitive : mesh["primitives"])
                names.push_back(json["materials"][primitive["material"].get<std::size_t>()]["name"]);
        return names;
    }

    nlohmann::json reported() const
    {
        QFile file(path("report.json"));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return nlohmann::json::parse(file.readAll().toStdString())["files"][0];
    }
};

TEST_F(MaterialTableRunTest, ATablePutsAssetsOnWhatItsRowsLookFor)
{
    write("assets/materials.json",
          R"({"rows": [{"part": "Pump*", "asset": "oak"}, {"occurrence": "Pl*", "asset": "u2"}]})");
    const QString input = writeBoxes();
    const Ending ending = run(input);
    ASSERT_EQ(ending.exitCode, 0) << ending.errors.toStdString();
    EXPECT_EQ(materials(), (std::vector<std::string>{"Brushed", "oak"})) << "that of the same name stays";
    EXPECT_TRUE(
        ending.errors.contains(text("%1: material assets: \"u2\" at 1 places by occurrence \"Pl*\"\n").arg(input)))
        << ending.errors.toStdString();
    EXPECT_TRUE(
        ending.errors.contains(text("%1: rows of materials.json that match nothing: part \"Pump*\"\n").arg(input)))
        << ending.errors.toStdString();
    EXPECT_EQ(reported()["materialTable"],
              nlohmann::json::parse(R"([{"row": "part \"Pump*\"", "asset": "oak", "places": 0, "matched": false},)"
                                    R"({"row": "occurrence \"Pl*\"", "asset": "u2", "places": 1, "matched": true}])"));
}

TEST_F(MaterialTableRunTest, TheTableWinsOverAssetsOfTheSameName)
{
    write("assets/materials.json", R"({"rows": [{"material": "Brushed", "asset": "oak"}]})");
    ASSERT_EQ(run(writeBoxes()).exitCode, 0);
    EXPECT_EQ(materials(), (std::vector<std::string>{"oak", "Plain"}));
}

TEST_F(MaterialTableRunTest, ATableHoldsForMeshFilesToo)
{
    write("assets/materials.json", R"({"rows": [{"color": "#ff8000", "asset": "oak"}]})");
    write("m.mtl", "newmtl paint\nKd 1 0.5 0\n");
    write("m.obj", "mtllib m.mtl\nv 0 0 0\nv 1 0 0\nv 0 1 0\nusemtl paint\nf 1 2 3\n");
    ASSERT_EQ(run(path("m.obj")).exitCode, 0);
    EXPECT_EQ(materials(), (std::vector<std::string>{"oak"}));
}

TEST_F(MaterialTableRunTest, ATableWithAFaultChangesNothingAndIsTold)
{
    const QString input = writeBoxes();
    const std::pair<const char*, const char*> tables[] = {
        {R"({"rows": [{"material": "Plain", "asset": "oak"}, {"material": "Brushed", "asset": "elm"}]})",
         "the folder has no asset \"elm\" (/rows/1/asset)"},
        {R"({"rows": [{"material": "Plain", "asset": "oak"}, {"material": "Brushed"}]})",
         "a row needs the name or the uuid of an \"asset\" (/rows/1)"},
        {"{\"rows\": [\n}", "this is no JSON text (line 2)"}};
    for (const auto& [table, complaint] : tables) {
        write("assets/materials.json", table);
        const Ending ending = run(input);
        EXPECT_EQ(ending.exitCode, 3) << table;
        EXPECT_TRUE(ending.errors.contains(path("assets/materials.json")) && ending.errors.contains(text(complaint)))
            << ending.errors.toStdString();
        EXPECT_EQ(materials(), (std::vector<std::string>{"Brushed", "Plain"})) << table;
        EXPECT_EQ(reported()["state"], "partial");
    }
}

/// Textures of assets land on parts of exact surfaces, which had no coordinates.
TEST_F(MaterialAssetsRunTest, TheExampleLibraryDressesTheFlywheel)
{
    const QString models = text(EXAMPLE_MODELS);
    const Ending ending = znimport({models + text("/flywheel.step"), text("--material-assets"),
                                    models + text("/../materials"), text("-o"), path("dressed.glb")});
    ASSERT_EQ(ending.exitCode, 0) << ending.errors.toStdString();
    EXPECT_FALSE(ending.errors.contains(text("match nothing"))) << ending.errors.toStdString();
    if (gltfvalidator::isInstalled()) {
        EXPECT_EQ(gltfvalidator::validate(path("dressed.glb")).errors, QStringList());
    }
    const nlohmann::json dressed = GlbFile(path("dressed.glb")).json;
    EXPECT_EQ(dressed["images"].size(), 2u);
    std::map<std::string, bool> hasCoordinates;
    for (const nlohmann::json& mesh : dressed["meshes"])
        hasCoordinates[mesh["name"]] = mesh["primitives"][0]["attributes"].contains("TEXCOORD_0");
    EXPECT_TRUE(hasCoordinates["shaft"]);
    EXPECT_TRUE(hasCoordinates["base plate"]);
    EXPECT_FALSE(hasCoordinates["washer"]) << "brass has no texture";
}

TEST_F(MaterialAssetsRunTest, AMissingFolderIsWrongUse)
{
    const Ending ending = znimport({writeBoxes(), text("--material-assets"), path("nowhere")});
    EXPECT_EQ(ending.exitCode, 2);
    EXPECT_TRUE(ending.errors.startsWith(
        text("znimport: --material-assets wants a folder, and there is none at '%1'\n").arg(path("nowhere"))))
        << ending.errors.toStdString();
}

} // namespace
