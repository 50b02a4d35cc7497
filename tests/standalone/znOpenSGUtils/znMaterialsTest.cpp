#include "host/znOpenSGUtils/znMaterials.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Geometry.h"
#include "host/OSGSystem/MaterialGroup.h"
#include "host/OSGSystem/MaterialPool.h"
#include "host/OSGSystem/SimpleMaterial.h"
#include "host/znKernel/znScenegraph.h"
#include "host/znOpenSGUtils/znNodeUtils.h"
#include "host/znOpenSGUtils/znOpenSGUtils.h"
#include "scene/EditAudit.h"
#include "tests/standalone/session/SessionTest.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

class MaterialsTest : public SessionTest
{
protected:
    static osg::SimpleMaterialPtr material(const char* name)
    {
        const osg::SimpleMaterialPtr material = osg::SimpleMaterial::create();
        osg::setName(material, name);
        return material;
    }
    static void addDrawn(const osg::NodePtr& parent, const osg::MaterialPtr& material)
    {
        const osg::GeometryPtr geometry = osg::Geometry::create();
        geometry->setMaterial(material);
        parent->addChild(osg::makeNodeFor(geometry));
    }
    static std::vector<std::string> namesIn(const osg::MaterialPoolPtr& pool)
    {
        std::vector<std::string> names;
        for (const osg::MaterialPtr& material : pool->getMaterials())
            names.push_back(osg::getName(material));
        return names;
    }

    const osg::NodePtr m_root = m_session.sceneRoot();
};

TEST_F(MaterialsTest, TheRootOfTheHelpersIsThatOfTheScene)
{
    EXPECT_TRUE(znOpenSGUtils::getRoot() == m_root);
}

TEST_F(MaterialsTest, TheScenesPoolIsMadeWhenItIsAskedFor)
{
    EXPECT_FALSE(znMaterials::findMaterialPool(m_root, false, false, znMaterials::AnyPool));
    const osg::NodePtr pool = znMaterials::findMaterialPool(m_root, false, true, znMaterials::AnyPool);
    ASSERT_TRUE(pool);
    EXPECT_TRUE(osg::fcCast<osg::MaterialPool>(pool->getCore()));
    EXPECT_TRUE(znMaterials::findMaterialPool(m_root, false, false, znMaterials::AnyPool) == pool);
    EXPECT_TRUE(znScenegraph::getMaterialPool() == pool->getCore());
    EXPECT_TRUE(znScenegraph::isEmpty());
}

TEST_F(MaterialsTest, OtherTreesHaveNoPoolOfTheirOwn)
{
    const osg::NodePtr part = addGroup(m_root, "part");
    EXPECT_FALSE(znMaterials::findMaterialPool(part, true, true, znMaterials::AnyPool));
    EXPECT_FALSE(znMaterials::findMaterialPool(osg::NodePtr(), true, true, znMaterials::AnyPool));
}

TEST_F(MaterialsTest, APoolThatHangsInTheTreeComesFirstIfItWillDo)
{
    const osg::NodePtr hanging = addGroup(addGroup(m_root, "part"), "pool");
    hanging->setCore(osg::MaterialPool::create());
    EXPECT_TRUE(znMaterials::findMaterialPool(m_root, true, true, znMaterials::AnyPool) == hanging);
    EXPECT_FALSE(znMaterials::findMaterialPool(m_root, false, true, znMaterials::AnyPool) == hanging);
}

TEST_F(MaterialsTest, APoolTakesEachMaterialOfATreeOnce)
{
    const osg::SimpleMaterialPtr steel = material("steel"), glass = material("glass"), paint = material("paint");
    const osg::MaterialGroupPtr group = osg::MaterialGroup::create();
    group->setMaterial(paint);
    const osg::NodePtr painted = osg::makeNodeFor(group);
    m_root->addChild(painted);
    addDrawn(painted, steel);
    addDrawn(painted, glass);
    addDrawn(m_root, steel);
    addDrawn(m_root, osg::MaterialPtr());
    const osg::MaterialPoolPtr pool = znScenegraph::getMaterialPool();
    pool->add(m_root);
    EXPECT_THAT(namesIn(pool), ElementsAre("paint", "steel", "glass"));
    pool->add(painted);
    pool->add(osg::NodePtr());
    EXPECT_EQ(pool->getMaterials().size(), 3U);
}

TEST_F(MaterialsTest, APoolHoldsAReferenceOnEachMaterial)
{
    const osg::SimpleMaterialPtr steel = material("steel");
    const osg::MaterialPoolPtr pool = znScenegraph::getMaterialPool();
    pool->add(osg::MaterialPtr(steel));
    pool->add(osg::MaterialPtr(steel));
    pool->add(osg::MaterialPtr());
    EXPECT_THAT(namesIn(pool), ElementsAre("steel"));
    EXPECT_EQ(steel->getRefCount(), 1U);
    addDrawn(m_root, steel);
    pool->sub(steel);
    pool->sub(steel);
    EXPECT_THAT(namesIn(pool), IsEmpty());
    EXPECT_EQ(steel->getRefCount(), 1U);
}

TEST_F(MaterialsTest, AdditionsToAPoolAreBracketedByWhoMakesThem)
{
    addDrawn(m_root, material("steel"));
    const osg::MaterialPoolPtr pool = znScenegraph::getMaterialPool();
    const osg::EditAudit audit;
    pool->add(m_root);
    EXPECT_THAT(audit.unbracketed(), ElementsAre(osg::EditAudit::Record{pool->getContainerId(), "MaterialPool",
                                                                        osg::MaterialPool::MaterialsFieldMask}));
    pool->add(m_root);
    EXPECT_EQ(audit.unbracketed().size(), 1U);
}

TEST_F(MaterialsTest, NamesAreGivenReplacedOrKept)
{
    const osg::RefPtr<osg::SimpleMaterialPtr> steel(osg::SimpleMaterial::create());
    znMaterials::setName(steel.get(), "Stahl ä", true);
    EXPECT_STREQ(osg::getName(steel.get()), "Stahl ä");
    znMaterials::setName(steel.get(), "other", true);
    EXPECT_STREQ(osg::getName(steel.get()), "Stahl ä");
    znMaterials::setName(steel.get(), "other", false);
    EXPECT_STREQ(osg::getName(steel.get()), "other");
    znMaterials::setName(steel.get(), nullptr, false);
    EXPECT_EQ(osg::getName(steel.get()), nullptr);
    znMaterials::setName(osg::MaterialPtr(), "other", false);
}

TEST_F(MaterialsTest, NodesTellTheirFormerName)
{
    const osg::NodePtr node = addGroup(m_root, "first");
    std::string former = "untouched";
    znNodeUtils::setName(node, "second", false, &former);
    EXPECT_EQ(former, "first");
    EXPECT_EQ(nameOf(node), "second");
    znNodeUtils::setName(node, "third", true, nullptr);
    EXPECT_EQ(nameOf(node), "second");
    znNodeUtils::setName(node, "", false, &former);
    EXPECT_EQ(former, "second");
    znNodeUtils::setName(node, "third", true, &former);
    EXPECT_EQ(former, "");
    EXPECT_EQ(nameOf(node), "third");
    znNodeUtils::setName(osg::NodePtr(), "x", false, &former);
    EXPECT_EQ(former, "");
}

} // namespace
