#include "standalone/znAssets/AssetMaterials.h"

#include "scene/MaterialLook.h"
#include "tests/scene/SurfaceDifferences.h"
#include "tests/standalone/znAssets/AssetTest.h"

namespace
{

using AssetMaterialsTest = AssetTest;

TEST_F(AssetMaterialsTest, AnAssetHasTheSurfaceOfItsMaterial)
{
    zn::assets::AssetLibrary::Entry entry;
    entry.asset.name = "oak";
    entry.asset.look.surface = surfacedifferences::surface();
    QStringList complaints;
    const osg::RefPtr<osg::MaterialPtr> material(zn::assets::makeAssetMaterial(entry, complaints));
    EXPECT_EQ(osg::surfaceOf(material.get()), surfacedifferences::surface());
    EXPECT_TRUE(complaints.isEmpty());
}

TEST_F(AssetMaterialsTest, AnAssetWithoutASurfaceHasNone)
{
    zn::assets::AssetLibrary::Entry entry;
    QStringList complaints;
    const osg::RefPtr<osg::MaterialPtr> material(zn::assets::makeAssetMaterial(entry, complaints));
    EXPECT_FALSE(material->findAttachment(osg::PhysicalSurfaceAttachmentBase::_type.getGroupId(), 0));
}

} // namespace
