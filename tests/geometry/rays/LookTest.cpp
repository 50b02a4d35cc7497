#include "geometry/rays/Look.h"

#include "host/OSGSystem/SimpleMaterial.h"
#include "host/OSGSystem/SwitchMaterial.h"
#include "host/znOpenSGUberMaterial/UberMaterial.h"
#include "tests/scene/SceneGraphTest.h"

namespace
{

using LookTest = SceneGraphTest;

TEST_F(LookTest, ASwitchMaterialLooksLikeItsChoice)
{
    const osg::RefPtr<osg::SwitchMaterialPtr> choices(osg::SwitchMaterialBase::create());
    const osg::SimpleMaterialPtr red = osg::SimpleMaterialBase::create();
    red->setDiffuse({1, 0, 0});
    const osg::SimpleMaterialPtr blue = osg::SimpleMaterialBase::create();
    blue->setDiffuse({0, 0, 1});
    blue->setTransparency(0.25f);
    choices->addMaterial(red);
    choices->addMaterial(blue);
    EXPECT_EQ(geometry::rays::lookOf(choices.get()).diffuse, Eigen::Vector3f(1, 0, 0));
    choices->setChoice(1);
    EXPECT_EQ(geometry::rays::lookOf(choices.get()).diffuse, Eigen::Vector3f(0, 0, 1));
    EXPECT_EQ(geometry::rays::lookOf(choices.get()).alpha, 0.75f);
    choices->setChoice(2);
    EXPECT_EQ(geometry::rays::lookOf(choices.get()).diffuse, Eigen::Vector3f(0.6f, 0.6f, 0.6f));
}

TEST_F(LookTest, AnUberMaterialHasItsOwnLook)
{
    const osg::RefPtr<osg::UberMaterialPtr> material(osg::UberMaterialBase::create());
    osg::SurfaceLook look;
    look.diffuse = {0, 1, 0};
    look.emission = {1, 0, 0};
    material->setLook(look);
    EXPECT_EQ(geometry::rays::lookOf(material.get()).diffuse, Eigen::Vector3f(0, 1, 0));
    EXPECT_EQ(geometry::rays::lookOf(material.get()).emission, Eigen::Vector3f(1, 0, 0));
}

} // namespace
