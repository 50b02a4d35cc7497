#include "optimization/MaterialHash.h"

#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/SimpleMaterial.h"
#include "host/OSGSystem/SwitchMaterial.h"
#include "host/znOpenSGUberMaterial/UBRDFMaterial.h"
#include "scene/MaterialLook.h"
#include "tests/scene/SceneGraphTest.h"

#include <functional>
#include <set>

namespace
{

class MaterialHashTest : public SceneGraphTest
{
protected:
    void TearDown() override
    {
        m_held.clear();
        SceneGraphTest::TearDown();
    }

    osg::SimpleMaterialPtr simple(const osg::Color3f& diffuse = {0.1f, 0.2f, 0.3f})
    {
        const osg::SimpleMaterialPtr material = osg::SimpleMaterial::create();
        m_held.emplace_back(material);
        material->setDiffuse(diffuse);
        return material;
    }
    osg::SwitchMaterialPtr switchOf(const osg::MaterialField& choices)
    {
        const osg::SwitchMaterialPtr material = osg::SwitchMaterial::create();
        m_held.emplace_back(material);
        for (const osg::MaterialPtr& choice : choices) {
            choice.addRef();
            material->editMaterials().push_back(choice);
        }
        return material;
    }

    osg::UBRDFMaterialPtr brdf(const osg::MaterialPtr& environment)
    {
        const osg::UBRDFMaterialPtr material = osg::UBRDFMaterial::create();
        m_held.emplace_back(material);
        material->setEnvironment(environment);
        return material;
    }

private:
    std::vector<osg::RefPtr<osg::MaterialPtr>> m_held;
};

TEST_F(MaterialHashTest, EqualMaterialsHaveOneHashWhateverTheirNames)
{
    const osg::SimpleMaterialPtr material = simple({-0.0f, 1, 0}), other = simple({0.0f, 1, 0});
    osg::setName(material, "steel");
    ASSERT_TRUE(osg::FieldContainer::isEqual(material, other));
    EXPECT_EQ(optimization::hashOf(material), optimization::hashOf(other));
    const osg::SwitchMaterialPtr choices = switchOf({simple(), {}}), like = switchOf({simple(), {}});
    ASSERT_TRUE(osg::FieldContainer::isEqual(choices, like));
    EXPECT_EQ(optimization::hashOf(choices), optimization::hashOf(like));
}

TEST_F(MaterialHashTest, EachNumberOfALookCounts)
{
    using Change = std::function<void(osg::SimpleMaterial&)>;
    const std::vector<Change> changes = {
        [](osg::SimpleMaterial&) {},
        [](osg::SimpleMaterial& material) {
            material.setAmbient({0.5f, 0, 0});
        },
        [](osg::SimpleMaterial& material) {
            material.setDiffuse({0.1f, 0.2f, 0.4f});
        },
        [](osg::SimpleMaterial& material) {
            material.setDiffuse({0.1f, 0.3f, 0.2f});
        },
        [](osg::SimpleMaterial& material) {
            material.setEmission({0, 0.5f, 0});
        },
        [](osg::SimpleMaterial& material) {
            material.setSpecular({0, 0, 0.5f});
        },
        [](osg::SimpleMaterial& material) { material.setShininess(7); },
        [](osg::SimpleMaterial& material) { material.setTransparency(0.5f); },
    };
    std::set<std::uint64_t> hashes;
    for (const Change& change : changes) {
        const osg::SimpleMaterialPtr material = simple();
        change(*material);
        hashes.insert(optimization::hashOf(material));
    }
    EXPECT_EQ(hashes.size(), changes.size());
}

TEST_F(MaterialHashTest, WhatAMaterialHoldsCounts)
{
    const osg::SwitchMaterialPtr chosen = switchOf({simple(), simple({1, 0, 0})});
    chosen->setChoice(1);
    const std::vector<osg::MaterialPtr> materials = {switchOf({}),
                                                     switchOf({{}}),
                                                     switchOf({simple()}),
                                                     switchOf({simple({1, 0, 0})}),
                                                     chosen,
                                                     switchOf({simple(), simple({1, 0, 0})}),
                                                     brdf({})};
    std::set<std::uint64_t> hashes;
    for (const osg::MaterialPtr& material : materials)
        hashes.insert(optimization::hashOf(material));
    EXPECT_EQ(hashes.size(), materials.size());
    EXPECT_EQ(optimization::hashOf(brdf({})), optimization::hashOf(brdf(simple())))
        << "not every host tells environments";
}

TEST_F(MaterialHashTest, ARingEnds)
{
    const osg::SwitchMaterialPtr outer = switchOf({}), inner = switchOf({outer});
    inner.addRef();
    outer->editMaterials().push_back(inner);
    EXPECT_EQ(optimization::hashOf(outer), optimization::hashOf(inner));
    outer->editMaterials().clear();
    inner.subRef();
}

TEST_F(MaterialHashTest, NullHasOne)
{
    EXPECT_NE(optimization::hashOf({}), optimization::hashOf(simple()));
}

} // namespace
