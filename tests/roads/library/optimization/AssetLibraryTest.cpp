// Imported materials that meet the asset library of the open host.

#include "host/znOpenSGExt/FileInfo.h"
#include "host/znOpenSGUtils/znDefaultEnvironment.h"
#include "optimization/MaterialUpdate.h"
#include "standalone/znAssets/SessionAssets.h"
#include "tests/optimization/MaterialTest.h"

#include <QUrl>

using namespace optimization;

namespace
{

class AssetLibraryTest : public MaterialTest
{
protected:
    AssetLibraryTest()
    {
        write(QStringLiteral("metals.gltf"), R"({"asset":{"version":"2.0"},"materials":[)"
                                             R"({"extras":{"uuid":"u-gold","name":"gold"}},)"
                                             R"({"extras":{"uuid":"u-tin","name":"tin","environment":"lost.png"}}]})");
        m_session.settings().set(QStringLiteral("assets.folder"), m_folder.path());
    }
};

TEST_F(AssetLibraryTest, CopiesOfAssetsBecomeTheMaterialsOfTheLibrary)
{
    const osg::NodePtr a = addGeometry(root, copyOfAsset(brdf("x"), "u-gold"));
    const osg::NodePtr b = addGeometry(root, copyOfAsset(brdf("y"), "u-gold"));
    const osg::SwitchMaterialPtr choices = switching("z", {copyOfAsset(simple("any"), "u-tin")});
    addGeometry(root, choices);
    updateMaterials(root);
    EXPECT_STREQ(osg::getName(materialOf(a)), "gold");
    EXPECT_TRUE(materialOf(b) == materialOf(a));
    EXPECT_STREQ(osg::getName(choices->getMaterial(0)), "tin");
    EXPECT_EQ(zn::assets::sessionAssets().count(), 2U);
}

TEST_F(AssetLibraryTest, AnAssetWhosePictureIsLostMirrorsTheDefaultEnvironment)
{
    const osg::NodePtr node = addGeometry(root, copyOfAsset(brdf("x"), "u-tin"));
    updateMaterials(root);
    const auto tin = osg::fcCast<osg::UBRDFMaterial>(materialOf(node));
    ASSERT_TRUE(tin);
    EXPECT_TRUE(tin->getEnvironment() == znDefaultEnvironment::getDefault());
    EXPECT_EQ(m_log.size(), 1U);
}

TEST_F(AssetLibraryTest, AssetsOfTheChosenFolderArePutOnMaterialsOfTheirNames)
{
    const osg::FileInfoPtr info = osg::FileInfo::create();
    root->addAttachment(info);
    const osg::NodePtr node = addGeometry(root, simple("gold"));
    applySelectedMaterialAssets(root);
    EXPECT_TRUE(osg::fcCast<osg::UBRDFMaterial>(materialOf(node)));
    EXPECT_EQ(info->getImportAppliedMaterialAssetsUrl(), QUrl::fromLocalFile(m_folder.path()).toString().toStdString());
}

} // namespace
