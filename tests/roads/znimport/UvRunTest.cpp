// Texture coordinates that are made on the whole road of a CAD file.

#include "files/scenefile/SceneFile.h"
#include "host/znOpenSGExt/ExtReference.h"
#include "scene/MaterialLook.h"
#include "tests/files/glb/GlbFile.h"
#include "tests/roads/znimport/ToolRun.h"
#include "tests/support/BookmarkScene.h"

#include <algorithm>

namespace
{

class UvRunTest : public ToolRun
{
protected:
    /// The GLB file of an import with these options.
    GlbFile made(const QStringList& options) const
    {
        const Ending end = znimport(options + QStringList{text("-o"), path("out.glb")});
        EXPECT_EQ(end.exitCode, 0) << end.errors.toStdString();
        return GlbFile(path("out.glb"));
    }
    GlbFile plate(const QStringList& options) const
    {
        return made(QStringList{text(EXAMPLE_MODELS "/plate.stp")} + options);
    }
    /// Of the primitives that are triangles.
    static std::vector<bool> haveCoordinates(const GlbFile& file)
    {
        std::vector<bool> result;
        for (const nlohmann::json& mesh : file.json["meshes"])
            for (const nlohmann::json& primitive : mesh["primitives"])
                if (primitive.value("mode", 4) == 4)
                    result.push_back(primitive["attributes"].contains("TEXCOORD_0"));
        return result;
    }

    /// A CAD file of two boxes, of the materials "Checkered", which has a texture, and "Plain".
    QString writeBoxes() const
    {
        const osg::ExtReferencePtr core = osg::ExtReferenceBase::create();
        core->setState(2);
        const osg::RefPtr<osg::NodePtr> root(osg::makeNodeFor(core));
        const osg::SimpleMaterialPtr checkered = bookmarkscene::paint("Checkered", {1, 1, 1});
        const QByteArray picture =
            QByteArray::fromBase64("iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAIAAACQd1PeAAAADElEQVR4nGP4z8"
                                   "AAAAMBAQDJ/pLvAAAAAElFTkSuQmCC");
        osg::PhysicalSurface surface;
        const auto* bytes = reinterpret_cast<const std::byte*>(picture.constData());
        surface.textures[osg::TextureSlot::BaseColor].image =
            osg::EncodedImage::share(std::vector<std::byte>(bytes, bytes + picture.size()), "image/png", "red");
        osg::setSurface(checkered, surface);
        for (const auto& material : {checkered, bookmarkscene::paint("Plain", {0, 0, 0})})
            root->addChild(
                bookmarkscene::part(osg::getName(material), bookmarkscene::box({0, 0, 0}, {10, 20, 30}), material));
        EXPECT_TRUE(osg::scenefile::writeSceneFile(root, path("made.osb")));
        return writeCad("boxes.stp", path("made.osb"));
    }
};

TEST_F(UvRunTest, CadFilesWithoutTexturesStayAsTheyAre)
{
    const GlbFile usual = plate({});
    const GlbFile none = plate({text("--uv"), text("none")});
    const GlbFile automatic = plate({text("--uv"), text("auto")});
    EXPECT_EQ(usual.bytes(), none.bytes());
    EXPECT_EQ(usual.bytes(), automatic.bytes());
    const std::vector<bool> have = haveCoordinates(usual);
    EXPECT_FALSE(have.empty());
    EXPECT_EQ(std::count(have.begin(), have.end(), true), 0);
}

TEST_F(UvRunTest, BoxesGiveThemToAll)
{
    const std::vector<bool> have = haveCoordinates(plate({text("--uv"), text("box")}));
    EXPECT_FALSE(have.empty());
    EXPECT_EQ(std::count(have.begin(), have.end(), false), 0);
}

TEST_F(UvRunTest, SurfacesGiveThemToExactPartsAlone)
{
    const QStringList surface{text("--uv"), text("surface")};
    const std::vector<bool> exact = haveCoordinates(made(QStringList{text(EXAMPLE_MODELS "/flywheel.step")} + surface));
    EXPECT_GT(exact.size(), 4u);
    EXPECT_EQ(std::count(exact.begin(), exact.end(), false), 0);
    const std::vector<bool> tessellated = haveCoordinates(plate(surface));
    EXPECT_EQ(std::count(tessellated.begin(), tessellated.end(), true), 0);
}

TEST_F(UvRunTest, AutoGivesThemWhereATextureLands)
{
    const QStringList options = withScriptedChild({writeBoxes()});
    const GlbFile file = made(options);
    ASSERT_EQ(file.json["materials"].size(), 2u);
    EXPECT_TRUE(file.json["materials"][0]["pbrMetallicRoughness"].contains("baseColorTexture"));
    EXPECT_EQ(haveCoordinates(file), (std::vector<bool>{true, false}));
    EXPECT_EQ(haveCoordinates(made(options + QStringList{text("--uv"), text("none")})),
              (std::vector<bool>{false, false}));
}

TEST_F(UvRunTest, AnotherKindIsWrongUse)
{
    const Ending end = znimport({text(EXAMPLE_MODELS "/plate.stp"), text("--uv"), text("sphere")});
    EXPECT_EQ(end.exitCode, 2);
    EXPECT_TRUE(end.errors.contains(text("--uv wants auto, box, surface or none, not 'sphere'")))
        << end.errors.toStdString();
}

} // namespace
