#include "host/OSGSystem/SwitchMaterial.h"

#include "host/OSGSystem/Edit.h"
#include "host/OSGSystem/SimpleMaterial.h"
#include "scene/SubMaterials.h"
#include "tests/scene/SceneGraphTest.h"

#include <gmock/gmock.h>

namespace
{

using osg::MaterialPtr;
using osg::SwitchMaterialPtr;
using testing::ElementsAre;

class SwitchMaterialTest : public SceneGraphTest
{
protected:
    void TearDown() override
    {
        choices = SwitchMaterialPtr();
        red = MaterialPtr();
        blue = MaterialPtr();
        SceneGraphTest::TearDown();
    }

    osg::RefPtr<SwitchMaterialPtr> choices{osg::SwitchMaterialBase::create()};
    osg::RefPtr<MaterialPtr> red{osg::SimpleMaterialBase::create()};
    osg::RefPtr<MaterialPtr> blue{osg::SimpleMaterialBase::create()};
};

TEST_F(SwitchMaterialTest, HoldsItsMaterialsInOrder)
{
    EXPECT_EQ(choices->getChoice(), 0u);
    EXPECT_FALSE(choices->getMaterial(0));
    choices->addMaterial(red);
    choices->addMaterial(blue);
    choices->addMaterial({});
    EXPECT_THAT(choices->getMaterials(), ElementsAre(red.get(), blue.get()));
    EXPECT_TRUE(choices->getMaterial(1) == blue.get());
    EXPECT_FALSE(choices->getMaterial(2));
    EXPECT_EQ(red->getRefCount(), 2u);
}

TEST_F(SwitchMaterialTest, GivesItsMaterialsUpWhenItDies)
{
    {
        const osg::RefPtr<SwitchMaterialPtr> passing(osg::SwitchMaterialBase::create());
        passing->addMaterial(red);
        EXPECT_EQ(red->getRefCount(), 2u);
    }
    EXPECT_EQ(red->getRefCount(), 1u);
}

TEST_F(SwitchMaterialTest, TakesNeitherItselfNorWhatHoldsIt)
{
    const osg::RefPtr<SwitchMaterialPtr> outer(osg::SwitchMaterialBase::create());
    outer->addMaterial(choices.get());
    choices->addMaterial(outer.get());
    choices->addMaterial(choices.get());
    EXPECT_TRUE(choices->getMaterials().empty());
}

TEST_F(SwitchMaterialTest, IsEqualWithEqualChoiceAndTheSameMaterials)
{
    choices->addMaterial(red);
    choices->setChoice(3);
    const osg::RefPtr<SwitchMaterialPtr> other(osg::SwitchMaterialBase::create());
    other->addMaterial(red);
    EXPECT_FALSE(osg::FieldContainer::isEqual(choices.get(), other.get()));
    other->setChoice(3);
    EXPECT_TRUE(osg::FieldContainer::isEqual(choices.get(), other.get()));
    other->addMaterial(blue);
    EXPECT_FALSE(osg::FieldContainer::isEqual(choices.get(), other.get()));
}

TEST_F(SwitchMaterialTest, LooksLikeItsChoiceThroughNestedOnes)
{
    const osg::RefPtr<SwitchMaterialPtr> outer(osg::SwitchMaterialBase::create());
    choices->addMaterial(red);
    choices->addMaterial(blue);
    choices->setChoice(1);
    outer->addMaterial(choices.get());
    EXPECT_TRUE(osg::shownMaterial(outer.get()) == blue.get());
    EXPECT_TRUE(osg::shownMaterial(red) == red.get());
    choices->setChoice(2);
    EXPECT_FALSE(osg::shownMaterial(outer.get()));
    EXPECT_FALSE(osg::shownMaterial({}));
}

TEST_F(SwitchMaterialTest, WhatAMaterialHoldsComesBeforeItOnceEach)
{
    const osg::RefPtr<SwitchMaterialPtr> outer(osg::SwitchMaterialBase::create());
    choices->addMaterial(red);
    outer->addMaterial(blue);
    outer->addMaterial(choices.get());
    outer->addMaterial(red);
    EXPECT_THAT(osg::subMaterialsFirst(outer.get()),
                ElementsAre(MaterialPtr(blue), MaterialPtr(red), MaterialPtr(choices.get()), MaterialPtr(outer.get())));
    EXPECT_TRUE(osg::subMaterialsFirst({}).empty());
}

TEST_F(SwitchMaterialTest, ARingIsCut)
{
    const osg::RefPtr<SwitchMaterialPtr> outer(osg::SwitchMaterialBase::create());
    outer->addMaterial(choices.get());
    osg::beginEditCP(choices.get(), osg::SwitchMaterialBase::MaterialsFieldMask, 1);
    choices->editMaterials().push_back(outer.get());
    osg::endEditCP(choices.get(), osg::SwitchMaterialBase::MaterialsFieldMask, 1);
    EXPECT_THAT(osg::subMaterialsFirst(outer.get()), ElementsAre(MaterialPtr(choices.get()), MaterialPtr(outer.get())));
    EXPECT_FALSE(osg::shownMaterial(outer.get()));
    choices->editMaterials().clear();
}

} // namespace
