#include "standalone/znOpenSGUtils/HelperCalls.h"
#include "tests/standalone/znAssets/AssetTest.h"

#include <QImage>

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

#include <QCoreApplication>

namespace
{

using LoadMaterialAsset = AssetTest;
using ApplyMaterialAssets = AssetTest;
using NamedCalls = AssetTest;

TEST_F(LoadMaterialAsset, AnAssetIsFoundByItsUuid)
{
    writeAssets(QStringLiteral("other.gltf"), material(R"("uuid":"u-0","name":"other")"));
    writeAssets(QStringLiteral("farben ä.gltf"),
                material(R"("name":"without uuid")") + "," + material(R"("uuid":"u-1","name":"Rot ä")"));
    const auto red = osg::fcCast<osg::UBRDFMaterial>(load("u-1"));
    ASSERT_TRUE(red);
    EXPECT_STREQ(osg::getName(red), "Rot ä");
    EXPECT_FLOAT_EQ(red->getLook().diffuse.red, 1);
    EXPECT_EQ(red->getLook().diffuse.green, 0);
    EXPECT_EQ(red->getLook().diffuse.blue, 0);
    const auto uuid =
        osg::fcCast<osg::AssetAttachment>(red->findAttachment(osg::AssetAttachmentBase::_type.getGroupId()));
    ASSERT_TRUE(uuid);
    EXPECT_EQ(uuid->getUuid(), "u-1");
    EXPECT_FALSE(red->getEnvironment());
    EXPECT_THAT(m_log, IsEmpty());
}

TEST_F(LoadMaterialAsset, AnAssetWithoutANameInItsExtrasBearsThatOfTheMaterial)
{
    writeAssets(QStringLiteral("a.gltf"), material(R"("uuid":"u-1")"));
    EXPECT_STREQ(osg::getName(load("u-1")), "own");
}

TEST_F(LoadMaterialAsset, FoldersBelowAreLookedAt)
{
    ASSERT_TRUE(QDir(m_folder.path()).mkpath(QStringLiteral("metal/noble")));
    writeAssets(QStringLiteral("metal/noble/gold.gltf"), material(R"("uuid":"au","name":"gold")"));
    EXPECT_STREQ(osg::getName(load("au")), "gold");
}

TEST_F(LoadMaterialAsset, AnUnknownUuidOrNoFolderGivesNothing)
{
    writeAssets(QStringLiteral("a.gltf"), material(R"("uuid":"u-1")"));
    EXPECT_FALSE(load("u-2"));
    EXPECT_FALSE(load(""));
    m_session.settings().set(QStringLiteral("assets.folder"), QString());
    EXPECT_FALSE(load("u-1"));
    znMessage message;
    EXPECT_FALSE(znOpenSGUtils::call("loadMaterialAsset", message, 0));
}

TEST_F(LoadMaterialAsset, AnAssetIsReadOnceAndAChangedFolderAnew)
{
    writeAssets(QStringLiteral("a.gltf"), material(R"("uuid":"u-1","name":"one")"));
    const osg::MaterialPtr first = load("u-1");
    EXPECT_TRUE(load("u-1") == first);
    writeAssets(QStringLiteral("b.gltf"), material(R"("uuid":"u-2","name":"two")"));
    EXPECT_FALSE(load("u-2")) << "the folder is looked at once in a pass of the event loop";
    QCoreApplication::processEvents();
    EXPECT_STREQ(osg::getName(load("u-2")), "two");
    writeAssets(QStringLiteral("c.gltf"), material(R"("uuid":"u-3","name":"three")"));
    QCoreApplication::processEvents();
    EXPECT_STREQ(osg::getName(load("u-3")), "three");
}

TEST_F(LoadMaterialAsset, TheFirstOfTwoWithOneUuidCountsAndTheOtherIsTold)
{
    const QString a = writeAssets(QStringLiteral("a.gltf"), material(R"("uuid":"u-1","name":"one")"));
    const QString b = writeAssets(QStringLiteral("b.gltf"), material(R"("uuid":"u-1","name":"two")"));
    EXPECT_STREQ(osg::getName(load("u-1")), "one");
    EXPECT_THAT(
        m_log,
        ElementsAre(
            (b + QStringLiteral(": the asset u-1 is there already, in ") + a + QStringLiteral(".")).toStdString()));
}

TEST_F(LoadMaterialAsset, ADamagedFileIsToldAndTheOthersCount)
{
    write(QStringLiteral("a.gltf"), R"({"asset":)");
    writeAssets(QStringLiteral("b.gltf"), material(R"("uuid":"u-1")"));
    EXPECT_TRUE(load("u-1"));
    ASSERT_EQ(m_log.size(), 1U);
    EXPECT_THAT(m_log[0], HasSubstr("a.gltf"));
}

TEST_F(LoadMaterialAsset, ExtrasOfOtherTypesAreNoAssets)
{
    writeAssets(QStringLiteral("a.gltf"), material(R"("uuid":7)") + R"(,{"extras":"text"},{"extras":[1]},{})");
    EXPECT_FALSE(load("7"));
    EXPECT_THAT(m_log, IsEmpty());
}

TEST_F(LoadMaterialAsset, APictureBecomesTheEnvironment)
{
    QImage picture(2, 1, QImage::Format_RGB888);
    picture.setPixel(0, 0, qRgb(10, 20, 30));
    picture.setPixel(1, 0, qRgb(200, 150, 100));
    ASSERT_TRUE(picture.save(path(QStringLiteral("hall.png"))));
    writeAssets(QStringLiteral("a.gltf"), material(R"("uuid":"u-1","environment":"hall.png")"));
    const auto chrome = osg::fcCast<osg::UBRDFMaterial>(load("u-1"));
    const osg::MaterialPtr hall = chrome->getActiveEnvironment();
    ASSERT_TRUE(hall);
    EXPECT_STREQ(osg::getName(hall), "hall");
    const auto image =
        osg::fcCast<osg::ImageAttachment>(hall->findAttachment(osg::ImageAttachmentBase::_type.getGroupId()));
    ASSERT_TRUE(image);
    EXPECT_EQ(image->getFileName(), path(QStringLiteral("hall.png")).toStdString());
    EXPECT_EQ(image->getWidth(), 2U);
    EXPECT_EQ(image->getHeight(), 1U);
    EXPECT_EQ(*image->getPixels(), (osg::ImageAttachmentBase::Pixels{10, 20, 30, 200, 150, 100}));
}

TEST_F(LoadMaterialAsset, APictureThatIsNotThereGivesAnEnvironmentWithoutAnImage)
{
    writeAssets(QStringLiteral("a.gltf"), material(R"("uuid":"u-1","environment":"lost.png")"));
    const auto chrome = osg::fcCast<osg::UBRDFMaterial>(load("u-1"));
    ASSERT_TRUE(chrome->getEnvironment());
    EXPECT_FALSE(chrome->getEnvironment()->findAttachment(osg::ImageAttachmentBase::_type.getGroupId()));
    ASSERT_EQ(m_log.size(), 1U);
    EXPECT_THAT(m_log[0], HasSubstr("lost.png: "));
}

TEST_F(LoadMaterialAsset, ACleanUpGivesUpWhatNobodyElseHolds)
{
    writeAssets(QStringLiteral("a.gltf"), material(R"("uuid":"u-1")") + "," + material(R"("uuid":"u-2")"));
    const osg::RefPtr<osg::MaterialPtr> used(load("u-1"));
    load("u-2");
    EXPECT_EQ(zn::assets::sessionAssets().count(), 2U);
    znAssetItemFactory::the().cleanupMaterialItems();
    EXPECT_EQ(zn::assets::sessionAssets().count(), 1U);
    EXPECT_TRUE(load("u-1") == used.get());
}

TEST_F(ApplyMaterialAssets, TheSelectedFolderIsToldAsAUrl)
{
    znMessage message;
    EXPECT_TRUE(znController::call("getSelectedMaterialAssetDirectory", message, 0));
    QUrl url;
    EXPECT_TRUE(message.get("url", url));
    EXPECT_EQ(url, QUrl::fromLocalFile(m_folder.path()));
    m_session.settings().set(QStringLiteral("assets.folder"), QString());
    znMessage other;
    EXPECT_FALSE(znController::call("getSelectedMaterialAssetDirectory", other, 0));
    EXPECT_TRUE(other.get("url").empty());
}

TEST_F(ApplyMaterialAssets, MaterialsGetTheAssetsThatBearTheirNames)
{
    writeAssets(QStringLiteral("a.gltf"), material(R"("uuid":"u-1","name":"Stahl ä")"));
    const osg::NodePtr part = addGroup(m_session.sceneRoot(), "part");
    const osg::MaterialPtr glass = simple("glass");
    const osg::NodePtr a = addDrawn(part, simple("Stahl ä")), b = addDrawn(part, simple("Stahl ä")),
                       c = addDrawn(part, glass), d = addDrawn(part, osg::SimpleMaterial::create());
    EXPECT_TRUE(apply(part, QUrl::fromLocalFile(m_folder.path())));
    EXPECT_TRUE(materialOf(a) == load("u-1"));
    EXPECT_TRUE(materialOf(b) == load("u-1"));
    EXPECT_TRUE(materialOf(c) == glass);
    EXPECT_EQ(osg::getName(materialOf(d)), nullptr);
}

TEST_F(ApplyMaterialAssets, SwitchMaterialsStayAndTheirChoicesChange)
{
    writeAssets(QStringLiteral("a.gltf"), material(R"("uuid":"u-1","name":"red")"));
    const osg::SwitchMaterialPtr paint = osg::SwitchMaterial::create();
    osg::setName(paint, "paint");
    const osg::MaterialPtr blue = simple("blue");
    paint->addMaterial(simple("red"));
    paint->addMaterial(blue);
    const osg::NodePtr part = addDrawn(m_session.sceneRoot(), paint);
    EXPECT_TRUE(apply(part, QUrl::fromLocalFile(m_folder.path())));
    EXPECT_TRUE(materialOf(part) == paint);
    EXPECT_EQ(paint->getMaterials(), (osg::MaterialField{load("u-1"), blue}));
}

TEST_F(ApplyMaterialAssets, OtherUrlsAndMissingAttributesFail)
{
    const osg::NodePtr part = addGroup(m_session.sceneRoot(), "part");
    EXPECT_FALSE(apply(part, QUrl(QStringLiteral("https://example.org/assets"))));
    znMessage message;
    EXPECT_FALSE(znController::call("applyMaterialAssetsToNodes", message, 0));
    message.set("url", QUrl::fromLocalFile(m_folder.path()), true);
    EXPECT_FALSE(znController::call("applyMaterialAssetsToNodes", message, 0));
}

TEST_F(NamedCalls, WhatNobodyKnowsFails)
{
    znMessage message;
    EXPECT_FALSE(znController::call("loadMaterialAsset", message, 0));
    EXPECT_FALSE(znOpenSGUtils::call("getSelectedMaterialAssetDirectory", message, 0));
    EXPECT_FALSE(znOpenSGUtils::call("", message, 0));
}

TEST_F(NamedCalls, AHostAddsItsOwnAndIsToldTheCaller)
{
    int told = 0;
    m_session.state<zn::nodes::HelperCalls>().table.offer("double", [&told](znMessage& message, int caller) {
        told = caller;
        int number = 0;
        message.get("number", number);
        message.set("result", 2 * number, true);
        return true;
    });
    znMessage message;
    message.set("number", 21, true);
    EXPECT_TRUE(znOpenSGUtils::call("double", message, 7));
    int result = 0;
    EXPECT_TRUE(message.get("result", result));
    EXPECT_EQ(result, 42);
    EXPECT_EQ(told, 7);
}

} // namespace
