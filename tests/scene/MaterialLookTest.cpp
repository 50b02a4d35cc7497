#include "scene/MaterialLook.h"

#include "host/OSGSystem/SimpleMaterial.h"
#include "scene/EditAudit.h"
#include "tests/scene/SceneGraphTest.h"
#include "tests/scene/SurfaceDifferences.h"

#include <limits>

namespace
{

using osg::AlphaMode;
using osg::PhysicalSurface;
using osg::SurfaceLook;

class MaterialLookTest : public SceneGraphTest
{
protected:
    MaterialLookTest() : m_material(osg::SimpleMaterialBase::create()) {}
    void TearDown() override
    {
        m_material = osg::SimpleMaterialPtr();
        SceneGraphTest::TearDown();
    }

    osg::SimpleMaterialPtr material() const { return m_material.get(); }
    bool hasAttachment() const
    {
        return bool(material()->findAttachment(osg::PhysicalSurfaceAttachmentBase::_type.getGroupId(), 0));
    }

private:
    osg::RefPtr<osg::SimpleMaterialPtr> m_material;
};

TEST_F(MaterialLookTest, HighlightsAndRoughnessBelongTogether)
{
    EXPECT_EQ(osg::roughnessOfShininess(0), 1);
    EXPECT_EQ(osg::roughnessOfShininess(-5), 1);
    EXPECT_EQ(osg::roughnessOfShininess(std::numeric_limits<float>::quiet_NaN()), 1);
    EXPECT_FLOAT_EQ(osg::roughnessOfShininess(30), 0.5f); // (2 / 32)^(1/4)
    EXPECT_FLOAT_EQ(osg::shininessOfRoughness(0.5f), 30);
    EXPECT_EQ(osg::shininessOfRoughness(1), 0);
    EXPECT_EQ(osg::shininessOfRoughness(0), 1e6f);
    EXPECT_EQ(osg::shininessOfRoughness(2), 0);
    for (const float roughness : {0.1f, 0.25f, 0.6f, 0.95f})
        EXPECT_NEAR(osg::roughnessOfShininess(osg::shininessOfRoughness(roughness)), roughness, 2e-6f);
}

TEST_F(MaterialLookTest, ALookImpliesASurfaceThatIsNoMetal)
{
    SurfaceLook look;
    look.shininess = 30;
    PhysicalSurface expected;
    expected.roughness = osg::roughnessOfShininess(30);
    EXPECT_EQ(osg::impliedSurface(look), expected);
    look.transparency = 0.75f;
    expected.opacity = 0.25f;
    expected.alphaMode = AlphaMode::Blend;
    EXPECT_EQ(osg::impliedSurface(look), expected);
    look.transparency = 3;
    EXPECT_EQ(osg::impliedSurface(look).opacity, 0);
    look.transparency = -1;
    EXPECT_EQ(osg::impliedSurface(look).opacity, 1);
    look.transparency = std::numeric_limits<float>::quiet_NaN();
    EXPECT_EQ(osg::impliedSurface(look).alphaMode, AlphaMode::Opaque);
}

TEST_F(MaterialLookTest, AMaterialWithoutASurfaceHasThatOfItsLook)
{
    material()->setShininess(30);
    material()->setTransparency(0.5f);
    EXPECT_EQ(osg::surfaceOf(material()), osg::impliedSurface(*osg::lookOf(material())));
    EXPECT_EQ(osg::surfaceOf({}), osg::impliedSurface({}));
}

TEST_F(MaterialLookTest, WhatTheLookAmountsToIsNotAttached)
{
    material()->setShininess(30);
    const PhysicalSurface implied = osg::impliedSurface(*osg::lookOf(material()));
    osg::setSurface(material(), implied);
    EXPECT_FALSE(hasAttachment());
    PhysicalSurface near = implied;
    near.roughness += 1e-6f;
    osg::setSurface(material(), near);
    EXPECT_FALSE(hasAttachment()) << "what went through a highlight and back";
    near.roughness = implied.roughness + 1e-4f;
    osg::setSurface(material(), near);
    EXPECT_TRUE(hasAttachment());
    osg::setSurface(material(), implied);
    EXPECT_FALSE(hasAttachment()) << "the former one goes";
}

TEST_F(MaterialLookTest, EachSingleDifferenceFromTheLookIsKept)
{
    for (const surfacedifferences::Difference& difference : surfacedifferences::all()) {
        PhysicalSurface surface = surfacedifferences::surface();
        difference.make(surface);
        osg::setSurface(material(), surface);
        EXPECT_EQ(osg::surfaceOf(material()), surface) << difference.what;
    }
}

TEST_F(MaterialLookTest, TheOpacityOfABlendedSurfaceIsThatOfTheLook)
{
    PhysicalSurface surface = surfacedifferences::surface();
    surface.alphaMode = AlphaMode::Blend;
    surface.opacity = 0.5f;
    osg::setSurface(material(), surface);
    material()->setTransparency(0.75f);
    EXPECT_EQ(osg::surfaceOf(material()).opacity, 0.25f);
    surface.alphaMode = AlphaMode::Mask;
    osg::setSurface(material(), surface);
    EXPECT_EQ(osg::surfaceOf(material()).opacity, 0.5f);
}

TEST_F(MaterialLookTest, ASurfaceIsExchangedWithinBracketsAndOnlyWhereItChanges)
{
    const osg::EditAudit audit;
    osg::setSurface(material(), surfacedifferences::surface());
    osg::setSurface(material(), PhysicalSurface(osg::impliedSurface(*osg::lookOf(material()))));
    osg::setSurface(material(), osg::impliedSurface(*osg::lookOf(material())));
    osg::setSurface({}, surfacedifferences::surface());
    EXPECT_TRUE(audit.unbracketed().empty());
    EXPECT_TRUE(audit.idleBrackets().empty());
    EXPECT_TRUE(audit.unmatchedEnds().empty());
    EXPECT_FALSE(hasAttachment());
}

} // namespace
