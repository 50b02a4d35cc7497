#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/MaterialGroup.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "host/znOpenSGUberMaterial/UberMaterial.h"
#include "tests/files/scenefile/SceneFileTest.h"

namespace
{

using UberMaterialFileTest = SceneFileTest;

TEST_F(UberMaterialFileTest, ItsLookAndNameComeBack)
{
    const osg::UberMaterialPtr material = osg::UberMaterial::create();
    material->setLook({{0.1F, 0.2F, 0.3F}, {0.4F, 0.5F, 0.6F}, {0.7F, 0.8F, 0.9F}, {0.15F, 0.25F, 0.35F}, 64, 0.75F});
    osg::setName(material, "Stahl ä");
    const osg::MaterialGroupPtr group = osg::MaterialGroup::create();
    group->setMaterial(material);
    const NodeRef written(osg::makeNodeFor(group));

    const NodeRef read = roundTrip(written);
    ASSERT_TRUE(read);
    const auto readGroup = osg::fcCast<osg::MaterialGroup>(read->getCore());
    ASSERT_TRUE(readGroup);
    const auto uber = osg::fcCast<osg::UberMaterial>(readGroup->getMaterial());
    ASSERT_TRUE(uber);
    EXPECT_STREQ(osg::getName(uber), "Stahl ä");
    EXPECT_TRUE(uber->getLook().ambient == (osg::Color3f{0.1F, 0.2F, 0.3F}));
    EXPECT_TRUE(uber->getLook().diffuse == (osg::Color3f{0.4F, 0.5F, 0.6F}));
    EXPECT_TRUE(uber->getLook().emission == (osg::Color3f{0.7F, 0.8F, 0.9F}));
    EXPECT_TRUE(uber->getLook().specular == (osg::Color3f{0.15F, 0.25F, 0.35F}));
    EXPECT_EQ(uber->getLook().shininess, 64.0F);
    EXPECT_EQ(uber->getLook().transparency, 0.75F);
}

} // namespace
