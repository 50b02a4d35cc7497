// Material assets on the whole road of a converted file.

#include "files/scenefile/SceneFile.h"
#include "host/znOpenSGExt/ExtReference.h"
#include "tests/files/glb/GlbFile.h"
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

TEST_F(MaterialAssetsRunTest, AMissingFolderIsWrongUse)
{
    const Ending ending = znimport({writeBoxes(), text("--material-assets"), path("nowhere")});
    EXPECT_EQ(ending.exitCode, 2);
    EXPECT_TRUE(ending.errors.startsWith(
        text("znimport: --material-assets wants a folder, and there is none at '%1'\n").arg(path("nowhere"))))
        << ending.errors.toStdString();
}

} // namespace
