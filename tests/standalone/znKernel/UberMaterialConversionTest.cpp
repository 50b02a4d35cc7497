#include "standalone/znKernel/UberMaterialConversion.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Geometry.h"
#include "host/OSGSystem/MaterialGroup.h"
#include "host/OSGSystem/SimpleMaterial.h"
#include "host/znKernel/znFileIO.h"
#include "host/znOpenSGUberMaterial/UberMaterial.h"
#include "scene/EditAudit.h"
#include "tests/standalone/session/SessionTest.h"

namespace
{

class UberMaterialConversionTest : public SessionTest
{
protected:
    static osg::SimpleMaterialPtr steel()
    {
        const osg::SimpleMaterialPtr material = osg::SimpleMaterial::create();
        osg::setName(material, "steel");
        material->setAmbient({0.1F, 0.2F, 0.3F});
        material->setDiffuse({0.4F, 0.5F, 0.6F});
        material->setEmission({0.7F, 0.8F, 0.9F});
        material->setSpecular({0.15F, 0.25F, 0.35F});
        material->setShininess(64);
        material->setTransparency(0.75F);
        return material;
    }
    osg::NodePtr addDrawn(const osg::MaterialPtr& material)
    {
        const osg::GeometryPtr geometry = osg::Geometry::create();
        geometry->setMaterial(material);
        const osg::NodePtr node = osg::makeNodeFor(geometry);
        m_root->addChild(node);
        return node;
    }
    static osg::MaterialPtr materialOf(const osg::NodePtr& node)
    {
        return osg::fcCast<osg::Geometry>(node->getCore())->getMaterial();
    }

    const osg::NodePtr m_root = m_session.sceneRoot();
};

TEST_F(UberMaterialConversionTest, ASimpleMaterialBecomesAnUberMaterialOfTheSameLookAndName)
{
    const osg::NodePtr node = addDrawn(steel());
    znFileIO::convertToUberMaterials(m_root);
    const auto uber = osg::fcCast<osg::UberMaterial>(materialOf(node));
    ASSERT_TRUE(uber);
    EXPECT_STREQ(osg::getName(uber), "steel");
    EXPECT_TRUE(uber->getLook().ambient == (osg::Color3f{0.1F, 0.2F, 0.3F}));
    EXPECT_TRUE(uber->getLook().diffuse == (osg::Color3f{0.4F, 0.5F, 0.6F}));
    EXPECT_TRUE(uber->getLook().emission == (osg::Color3f{0.7F, 0.8F, 0.9F}));
    EXPECT_TRUE(uber->getLook().specular == (osg::Color3f{0.15F, 0.25F, 0.35F}));
    EXPECT_EQ(uber->getLook().shininess, 64.0F);
    EXPECT_EQ(uber->getLook().transparency, 0.75F);
}

TEST_F(UberMaterialConversionTest, ASharedMaterialStaysShared)
{
    const osg::SimpleMaterialPtr shared = steel();
    const osg::NodePtr first = addDrawn(shared);
    const osg::MaterialGroupPtr group = osg::MaterialGroup::create();
    group->setMaterial(shared);
    const osg::NodePtr grouped = osg::makeNodeFor(group);
    m_root->addChild(grouped);
    znFileIO::convertToUberMaterials(m_root);
    EXPECT_TRUE(materialOf(first) == group->getMaterial());
    EXPECT_TRUE(osg::fcCast<osg::UberMaterial>(group->getMaterial()));
}

TEST_F(UberMaterialConversionTest, WhatIsNoSimpleMaterialStays)
{
    const osg::UberMaterialPtr uber = osg::UberMaterial::create();
    const osg::NodePtr first = addDrawn(uber), second = addDrawn(osg::MaterialPtr());
    znFileIO::convertToUberMaterials(m_root);
    EXPECT_TRUE(materialOf(first) == uber);
    EXPECT_FALSE(materialOf(second));
    znFileIO::convertToUberMaterials(osg::NodePtr());
}

TEST_F(UberMaterialConversionTest, ASecondConversionChangesNothing)
{
    const osg::NodePtr node = addDrawn(steel());
    znFileIO::convertToUberMaterials(m_root);
    const osg::MaterialPtr converted = materialOf(node);
    const osg::EditAudit audit;
    znFileIO::convertToUberMaterials(m_root);
    EXPECT_TRUE(materialOf(node) == converted);
    EXPECT_THAT(audit.brackets(), testing::IsEmpty());
}

TEST_F(UberMaterialConversionTest, ChangesStandInTheBracketsOfTheirFields)
{
    addDrawn(steel());
    const osg::EditAudit audit;
    znFileIO::convertToUberMaterials(m_root);
    EXPECT_THAT(audit.unbracketed(), testing::IsEmpty());
    EXPECT_THAT(audit.idleBrackets(), testing::IsEmpty());
}

} // namespace
