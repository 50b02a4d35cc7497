// Bookmarks of a converted model on their whole way: conversion, scene file, GLB, pictures.

#include "files/glb/GlbWriter.h"
#include "files/scenefile/SceneFile.h"
#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Edit.h"
#include "host/OSGSystem/MaterialPool.h"
#include "host/znKernel/znFileIO.h"
#include "host/znKernel/znScenegraph.h"
#include "host/znOpenSGUberCamera/znUberCameraPool.h"
#include "host/znVariants/znVariants.h"
#include "optimization/BookmarkConversion.h"
#include "render/Snapshot.h"
#include "scene/VariantTable.h"
#include "standalone/loading/SceneExtras.h"
#include "standalone/znOpenSGUberCamera/SessionCameras.h"
#include "standalone/znVariants/SessionVariants.h"
#include "tests/files/glb/GlbFile.h"
#include "tests/gltf-validator/GltfValidator.h"
#include "tests/standalone/session/SessionTest.h"
#include "tests/support/BookmarkScene.h"
#include "tests/support/QtPrinters.h"

#include <QDir>

namespace
{

QString text(const char* utf8)
{
    return QString::fromUtf8(utf8);
}

/// The car of `bookmarkscene`, through a scene file into the scene, its materials in the pool.
class BookmarkRoadTest : public SessionTest
{
protected:
    void SetUp() override
    {
        const osg::RefPtr<osg::NodePtr> made(bookmarkscene::make());
        ASSERT_TRUE(osg::scenefile::writeSceneFile(made, path(text("car.osb"))));
        ASSERT_EQ(znFileIO::load({path(text("car.osb"))}, m_session.sceneRoot(), true, false, false), 131003);
        m_car = m_session.sceneRoot()->getChild(0);
        const osg::MaterialPoolPtr pool = znScenegraph::getMaterialPool();
        osg::beginEditCP(pool, osg::AllFieldsMask, 1);
        pool->add(m_car);
        osg::endEditCP(pool, osg::AllFieldsMask, 1);
    }

    void convert() { optimization::convertStylarBookmarks(m_car, false); }

    osg::NodePtr part(unsigned index) const { return m_car->getChild(index); }

    QStringList apply(const char* set)
    {
        return zn::variants::SessionVariants::apply(*znVariants::findVariantSet(text(set)),
                                                    zn::cameras::sessionCameras());
    }

    /// The picture of the scene as it is now; also into the folder ZN_PICTURES when that is set.
    QImage picture(const char* name)
    {
        render::SnapshotOptions options;
        options.width = 320;
        options.height = 200;
        if (const osg::UberCameraPtr view = zn::cameras::sessionCameras().view())
            options.eye = render::Eye{zn::cameras::sessionCameras().placementOf(view), true, view->getFieldOfView(), 0};
        const render::SnapshotResult result = render::renderSnapshot(m_session.sceneRoot(), options);
        EXPECT_FALSE(result.error) << result.error.message.toStdString();
        const QString folder = qEnvironmentVariable("ZN_PICTURES");
        if (!folder.isEmpty()) {
            EXPECT_TRUE(result.image.save(QDir(folder).filePath(text(name) + QStringLiteral(".png"))));
        }
        return result.image;
    }

    osg::NodePtr m_car;
};

/// Which paint the middle of a picture shows: "light" glass, "dark" glass, "orange" box or "grey" body.
const char* middleOf(const QImage& image)
{
    const QColor color = image.pixelColor(image.width() / 2, image.height() / 2);
    if (color.red() > 1.5 * color.blue())
        return "orange";
    if (color.lightness() < 60)
        return "dark";
    return color.blue() > color.red() + 10 ? "light" : "grey";
}

TEST_F(BookmarkRoadTest, BookmarksBecomeSetsVariantsAndViewpoints)
{
    EXPECT_EQ(znUberCameraPool::the()->getNumCameras(), 2u);
    convert();
    EXPECT_EQ(m_car->getNChildren(), 3u);
    const auto& sets = zn::variants::sessionVariants().sets();
    ASSERT_EQ(sets.size(), 3u);
    EXPECT_EQ(sets[0]->getName(), text("Open Roof"));
    EXPECT_EQ(sets[0]->getGroup()->getName(), text("Exterior"));
    EXPECT_EQ(sets[1]->m_viewpointName, text("Night_vp"));
    EXPECT_EQ(sets[1]->findMaterialVariant(text("Roof Glass"))->m_stateName, text("Tinted"));
    EXPECT_TRUE(sets[2]->getGroup() == nullptr);
    EXPECT_EQ(sets[2]->m_viewpointName, QString());
    EXPECT_EQ(zn::variants::sessionVariants().nodeVariants().size(), 2u);
    EXPECT_EQ(osg::tagsOf(part(1)), std::vector<std::string>{"fragile"});
    EXPECT_TRUE(osg::tagsOf(part(2)).empty());
    // One camera with one track, and a viewpoint of each bookmark that had a camera.
    EXPECT_EQ(zn::cameras::sessionCameras().root()->getNChildren(), 1u);
    EXPECT_EQ(znUberCameraPool::the()->getNumCameras(), 3u);
}

TEST_F(BookmarkRoadTest, EachSetShowsItsPicture)
{
    convert();
    EXPECT_EQ(apply("Open Roof"), QStringList());
    EXPECT_FALSE(part(1)->isActive());
    EXPECT_STREQ(middleOf(picture("open-roof")), "grey");
    EXPECT_EQ(apply("Night"), QStringList());
    EXPECT_TRUE(part(1)->isActive());
    EXPECT_EQ(zn::cameras::sessionCameras().view()->getTranslation(), (osg::Vec3f{2000, -7000, 700}));
    picture("night-from-its-side");
    zn::cameras::sessionCameras().look(zn::cameras::sessionCameras().findViewpoint(text("Open Roof_vp")).cameraId);
    EXPECT_STREQ(middleOf(picture("night")), "dark");
    EXPECT_EQ(apply("Journey"), QStringList());
    EXPECT_STREQ(middleOf(picture("journey")), "orange");
    part(2)->setActive(false);
    EXPECT_STREQ(middleOf(picture("clear")), "light");
}

TEST_F(BookmarkRoadTest, TheGlbIsValidAndTellsEverySet)
{
    convert();
    const zn::SceneWithExtras scene(m_session);
    const QString file = path(text("car.glb"));
    ASSERT_TRUE(files::glb::write(scene.root(), file));
    if (gltfvalidator::isInstalled()) {
        EXPECT_TRUE(gltfvalidator::validate(file) == gltfvalidator::Verdict());
    }
    const GlbFile glb(file);
    nlohmann::json json = glb.json;
    EXPECT_EQ(json["extensions"]["KHR_materials_variants"]["variants"],
              nlohmann::json::parse(R"([{"name":"Open Roof"},{"name":"Night"},{"name":"Journey"}])"));
    EXPECT_EQ(json["extensionsUsed"], nlohmann::json::parse(R"(["KHR_materials_variants","KHR_node_visibility"])"));
    EXPECT_EQ(json["cameras"].size(), 3u);
    EXPECT_EQ(json["asset"]["extras"]["variantSets"][1],
              nlohmann::json::parse(R"({"name":"Night","group":"Exterior","viewpoint":"Night_vp"})"));
}

TEST_F(BookmarkRoadTest, ASavedSceneHasTheSameSets)
{
    convert();
    {
        const zn::SceneWithExtras scene(m_session);
        ASSERT_TRUE(osg::scenefile::writeSceneFile(scene.root(), path(text("saved.osb"))));
    }
    const files::Result<osg::NodePtr> read = osg::scenefile::readSceneFile(path(text("saved.osb")));
    ASSERT_TRUE(read);
    const osg::RefPtr<osg::NodePtr> root(read.value());
    const auto variants = osg::VariantAttachment::of(root);
    ASSERT_TRUE(variants);
    ASSERT_EQ(variants->table().sets.size(), 3u);
    const osg::VariantTable::Set& night = variants->table().sets[1];
    EXPECT_EQ(night.materials, (std::vector<osg::VariantTable::MaterialState>{{"Roof Glass", "Tinted"}}));
    EXPECT_EQ(night.nodes, (std::vector<osg::VariantTable::NodeState>{{{0, 1}, "!Enable"}, {{0, 2}, "!Disable"}}));
}

} // namespace
