#include "host/OSGSystem/FieldContainer.h"

#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/SimpleMaterial.h"
#include "host/OSGSystem/Transform3D.h"
#include "tests/scene/SceneGraphTest.h"

namespace
{

using FieldContainerTest = SceneGraphTest;

osg::SimpleMaterialPtr paint(float red)
{
    const osg::SimpleMaterialPtr material = osg::SimpleMaterialBase::create();
    material->setDiffuse({red, 0.25f, 0.125f});
    return material;
}

TEST_F(FieldContainerTest, EqualityComparesTheFieldsOfOneClass)
{
    const osg::RefPtr<osg::SimpleMaterialPtr> first(paint(0.5f)), second(paint(0.5f)), third(paint(0.75f));
    EXPECT_TRUE(osg::FieldContainer::isEqual(first.get(), second.get()));
    EXPECT_FALSE(osg::FieldContainer::isEqual(first.get(), third.get()));
    second->setTransparency(0.5f);
    EXPECT_FALSE(osg::FieldContainer::isEqual(first.get(), second.get()));
}

TEST_F(FieldContainerTest, EqualityLooksAtEachFieldOfAMaterial)
{
    using Change = void (*)(osg::SimpleMaterial&);
    const Change changes[] = {
        [](osg::SimpleMaterial& m) {
            m.setAmbient({0.1f, 0, 0});
        },
        [](osg::SimpleMaterial& m) {
            m.setDiffuse({0.1f, 0, 0});
        },
        [](osg::SimpleMaterial& m) {
            m.setEmission({0.1f, 0, 0});
        },
        [](osg::SimpleMaterial& m) {
            m.setSpecular({0.1f, 0, 0});
        },
        [](osg::SimpleMaterial& m) { m.setShininess(17); },
        [](osg::SimpleMaterial& m) { m.setTransparency(0.1f); },
    };
    for (std::size_t i = 0; i < std::size(changes); ++i) {
        const osg::RefPtr<osg::SimpleMaterialPtr> first(paint(0.5f)), second(paint(0.5f));
        changes[i](*second.get());
        EXPECT_FALSE(osg::FieldContainer::isEqual(first.get(), second.get())) << "change " << i;
    }
}

TEST_F(FieldContainerTest, EqualityIgnoresNames)
{
    const osg::RefPtr<osg::SimpleMaterialPtr> first(paint(0.5f)), second(paint(0.5f));
    osg::setName(first.get(), "Chrome");
    EXPECT_TRUE(osg::FieldContainer::isEqual(first.get(), second.get()));
    osg::setName(second.get(), "chrome");
    EXPECT_TRUE(osg::FieldContainer::isEqual(first.get(), second.get()));
}

TEST_F(FieldContainerTest, EqualityTellsClassesApartAndKnowsNull)
{
    const osg::RefPtr<osg::TransformPtr> plain(osg::TransformBase::create());
    const osg::RefPtr<osg::Transform3DPtr> derived(osg::Transform3DBase::create());
    EXPECT_FALSE(osg::FieldContainer::isEqual(plain.get(), derived.get()));
    EXPECT_FALSE(osg::FieldContainer::isEqual(plain.get(), osg::FieldContainerPtr()));
    EXPECT_TRUE(osg::FieldContainer::isEqual(osg::FieldContainerPtr(), osg::FieldContainerPtr()));
}

} // namespace
