// A GLB file of each variant set, and what a round through GLB keeps of them.

#include "tests/files/glb/GlbFile.h"
#include "tests/gltf-validator/GltfValidator.h"
#include "tests/roads/znimport/CarRun.h"

namespace
{

class VariantFilesTest : public CarRun
{
protected:
    nlohmann::json fileOf(const char* set) const
    {
        const QString file = QDir(path("sets")).filePath(text(set) + text(".glb"));
        if (gltfvalidator::isInstalled()) {
            EXPECT_TRUE(gltfvalidator::validate(file) == gltfvalidator::Verdict());
        }
        return GlbFile(file).json;
    }
    /// How many nodes with a mesh there are of this name.
    static int countOf(const nlohmann::json& json, const std::string& name)
    {
        int count = 0;
        for (const nlohmann::json& node : json["nodes"])
            count += node.value("name", "") == name && node.contains("mesh") ? 1 : 0;
        return count;
    }
};

TEST_F(VariantFilesTest, EachSetBecomesAFileOfWhatItShows)
{
    const Ending ending = znimport(withScriptedChild({writeCar(), text("--variant-files"), path("sets")}));
    ASSERT_EQ(ending.exitCode, 0) << ending.errors.toStdString();
    EXPECT_EQ(QDir(path("sets")).entryList(QDir::Files | QDir::Hidden),
              (QStringList{text("Journey.glb"), text("Night.glb"), text("Open Roof.glb")}));
    for (const char* set : {"Journey", "Night", "Open Roof"}) {
        const nlohmann::json json = fileOf(set);
        EXPECT_FALSE(json.contains("extensionsUsed")) << set;
        EXPECT_EQ(json.dump().find("variant"), std::string::npos) << set;
    }
    EXPECT_EQ(countOf(fileOf("Open Roof"), "roof"), 0);
    EXPECT_EQ(countOf(fileOf("Night"), "roof"), 1);
}

TEST_F(VariantFilesTest, TheFolderMayNotBeAFile)
{
    const QString car = writeCar();
    const Ending ending = znimport(withScriptedChild({car, text("--variant-files"), car}));
    EXPECT_EQ(ending.exitCode, 2);
    EXPECT_TRUE(ending.errors.contains(text("--variant-files wants a folder"))) << ending.errors.toStdString();
}

TEST_F(VariantFilesTest, TheSettingSaysWhatBecomesOfHiddenParts)
{
    const auto hiddenWith = [this](const char* value) {
        const Ending ending =
            znimport(withScriptedChild({writeCar(), text("--variant"), text("Open Roof"), text("-o"), path("out.glb"),
                                        text("--set"), text("export.hidden=") + text(value)}));
        EXPECT_EQ(ending.exitCode, 0) << ending.errors.toStdString();
        nlohmann::json hidden = nlohmann::json::array();
        const nlohmann::json file = GlbFile(path("out.glb")).json;
        for (const nlohmann::json& node : file["nodes"])
            if (node.contains("/extensions/KHR_node_visibility"_json_pointer))
                hidden.push_back(node);
        return hidden;
    };
    const nlohmann::json shrunk = hiddenWith("shrink");
    const nlohmann::json kept = hiddenWith("keep");
    ASSERT_FALSE(shrunk.empty());
    EXPECT_EQ(kept.size(), shrunk.size());
    EXPECT_TRUE(shrunk[0]["extras"].contains("shown"));
    EXPECT_FALSE(kept[0].value("extras", nlohmann::json::object()).contains("shown"));
    EXPECT_TRUE(hiddenWith("leave-out").empty());
}

TEST_F(VariantFilesTest, ARoundThroughGlbKeepsTheSets)
{
    const Ending first = znimport(withScriptedChild({writeCar(), text("--variants"), text("-o"), path("first.glb")}));
    ASSERT_EQ(first.exitCode, 0) << first.errors.toStdString();
    const Ending second = znimport({path("first.glb"), text("--variants"), text("-o"), path("second.glb")});
    ASSERT_EQ(second.exitCode, 0) << second.errors.toStdString();
    EXPECT_EQ(second.output, first.output);
    const nlohmann::json before = GlbFile(path("first.glb")).json;
    const nlohmann::json after = GlbFile(path("second.glb")).json;
    EXPECT_EQ(after["nodes"].size(), before["nodes"].size());
    EXPECT_EQ(after["extensions"], before["extensions"]);
    EXPECT_EQ(after["extensionsUsed"], before["extensionsUsed"]);
    EXPECT_EQ(after["meshes"], before["meshes"]);
}

} // namespace
