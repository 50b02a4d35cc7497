#include "host/OSGSystem/SwitchMaterial.h"

#include "host/OSGSystem/Edit.h"
#include "host/OSGSystem/Names.h"
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

TEST_F(SwitchMaterialTest, IsEqualWithEqualChoiceAndEqualMaterials)
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

SwitchMaterialPtr switchOf(const std::vector<MaterialPtr>& materials)
{
    const SwitchMaterialPtr result = osg::SwitchMaterialBase::create();
    osg::beginEditCP(result, osg::SwitchMaterialBase::MaterialsFieldMask, 1);
    for (const MaterialPtr& material : materials) {
        material.addRef();
        result->editMaterials().push_back(material);
    }
    osg::endEditCP(result, osg::SwitchMaterialBase::MaterialsFieldMask, 1);
    return result;
}

MaterialPtr paint(const char* name, float red)
{
    const osg::SimpleMaterialPtr result = osg::SimpleMaterialBase::create();
    osg::setName(result, name);
    result->setDiffuse({red, 0, 0});
    return result;
}

bool areEqual(const SwitchMaterialPtr& a, const SwitchMaterialPtr& b)
{
    const osg::RefPtr<SwitchMaterialPtr> first(a), second(b);
    return osg::FieldContainer::isEqual(a, b);
}

TEST_F(SwitchMaterialTest, MaterialsInsideAreComparedByTheirFieldsAndNames)
{
    EXPECT_TRUE(areEqual(switchOf({paint("a", 1), paint("b", 0)}), switchOf({paint("a", 1), paint("b", 0)})));
    EXPECT_FALSE(areEqual(switchOf({paint("a", 1), paint("b", 0)}), switchOf({paint("b", 0), paint("a", 1)})));
    EXPECT_FALSE(areEqual(switchOf({paint("a", 1)}), switchOf({paint("a", 0.5f)})));
    EXPECT_FALSE(areEqual(switchOf({paint("a", 1)}), switchOf({paint("A", 1)})));
    EXPECT_FALSE(areEqual(switchOf({paint("a", 1)}), switchOf({switchOf({paint("a", 1)})})));
}

TEST_F(SwitchMaterialTest, NestedOnesAreComparedAtAnyDepth)
{
    const auto nested = [](float shade, unsigned depth) {
        MaterialPtr inner = paint("a", shade);
        for (unsigned i = 0; i < depth; ++i)
            inner = switchOf({inner, inner});
        return switchOf({inner});
    };
    EXPECT_TRUE(areEqual(nested(1, 100'000), nested(1, 100'000)));
    EXPECT_FALSE(areEqual(nested(1, 1000), nested(0.5f, 1000)));
    EXPECT_FALSE(areEqual(nested(1, 10), nested(1, 11)));
}

TEST_F(SwitchMaterialTest, RingsThatLookAlikeAreEqual)
{
    const auto ring = [](float shade) {
        const SwitchMaterialPtr result = switchOf({paint("a", shade)});
        osg::beginEditCP(result, osg::SwitchMaterialBase::MaterialsFieldMask, 1);
        result->editMaterials().push_back(result);
        osg::endEditCP(result, osg::SwitchMaterialBase::MaterialsFieldMask, 1);
        return result;
    };
    const auto cut = [](const SwitchMaterialPtr& material) {
        osg::beginEditCP(material, osg::SwitchMaterialBase::MaterialsFieldMask, 1);
        material->editMaterials().pop_back();
        osg::endEditCP(material, osg::SwitchMaterialBase::MaterialsFieldMask, 1);
    };
    const osg::RefPtr<SwitchMaterialPtr> one(ring(1)), other(ring(1)), third(ring(0.5f));
    EXPECT_TRUE(osg::FieldContainer::isEqual(one.get(), other.get()));
    EXPECT_FALSE(osg::FieldContainer::isEqual(one.get(), third.get()));
    for (const osg::RefPtr<SwitchMaterialPtr>& material : {one, other, third})
        cut(material.get());
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
