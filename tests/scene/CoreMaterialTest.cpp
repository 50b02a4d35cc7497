#include "scene/CoreMaterial.h"

#include "host/OSGSystem/Geometry.h"
#include "host/OSGSystem/MaterialGroup.h"
#include "host/OSGSystem/SimpleMaterial.h"
#include "host/OSGSystem/Transform.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "scene/EditAudit.h"
#include "tests/scene/SceneGraphTest.h"

namespace
{

class CoreMaterialTest : public SceneGraphTest
{
protected:
    using Records = std::vector<osg::EditAudit::Record>;

    void TearDown() override
    {
        m_group = osg::MaterialGroupPtr();
        m_geometry = osg::GeometryPtr();
        m_paint = osg::SimpleMaterialPtr();
        SceneGraphTest::TearDown();
    }

    osg::RefPtr<osg::SimpleMaterialPtr> m_paint{osg::SimpleMaterialBase::create()};
    osg::RefPtr<osg::MaterialGroupPtr> m_group{osg::MaterialGroupBase::create()};
    osg::RefPtr<osg::GeometryPtr> m_geometry{osg::GeometryBase::create()};
};

TEST_F(CoreMaterialTest, GroupsAndGeometriesHoldMaterials)
{
    m_group->setMaterial(m_paint.get());
    m_geometry->setMaterial(m_paint.get());
    EXPECT_TRUE(osg::materialOf(m_group.get()) == m_paint.get());
    EXPECT_TRUE(osg::materialOf(m_geometry.get()) == m_paint.get());
}

TEST_F(CoreMaterialTest, OtherCoresAndNullHoldNone)
{
    const osg::RefPtr<osg::TransformPtr> transform(osg::TransformBase::create());
    EXPECT_FALSE(osg::materialOf(m_group.get()));
    EXPECT_FALSE(osg::materialOf(transform.get()));
    EXPECT_FALSE(osg::materialOf(osg::NodeCorePtr()));
    EXPECT_FALSE(osg::setMaterial(transform.get(), m_paint.get()));
    EXPECT_FALSE(osg::setMaterial(osg::NodeCorePtr(), m_paint.get()));
    EXPECT_EQ(m_paint->getRefCount(), 1u);
}

TEST_F(CoreMaterialTest, TheTopmostGroupWithAMaterialRulesWhatIsBelow)
{
    const osg::RefPtr<osg::NodePtr> group(osg::makeNodeFor(m_group.get()));
    const osg::RefPtr<osg::NodePtr> geometry(osg::makeNodeFor(m_geometry.get()));
    const osg::RefPtr<osg::SimpleMaterialPtr> above(osg::SimpleMaterialBase::create());
    m_geometry->setMaterial(m_paint.get());
    EXPECT_FALSE(osg::materialBelow(geometry, osg::MaterialPtr()));
    EXPECT_FALSE(osg::materialBelow(group, osg::MaterialPtr()));
    m_group->setMaterial(m_paint.get());
    EXPECT_TRUE(osg::materialBelow(group, osg::MaterialPtr()) == m_paint.get());
    EXPECT_TRUE(osg::materialBelow(group, above.get()) == above.get());
    EXPECT_TRUE(osg::materialBelow(geometry, above.get()) == above.get());
}

TEST_F(CoreMaterialTest, AMaterialIsGivenWithinTheBracketOfItsField)
{
    const osg::EditAudit audit;
    EXPECT_TRUE(osg::setMaterial(m_group.get(), m_paint.get()));
    EXPECT_TRUE(osg::setMaterial(m_geometry.get(), m_paint.get()));
    EXPECT_TRUE(m_group->getMaterial() == m_paint.get());
    EXPECT_TRUE(m_geometry->getMaterial() == m_paint.get());
    EXPECT_EQ(audit.unbracketed(), Records());
    EXPECT_EQ(audit.brackets(),
              (Records{{m_group->getContainerId(), "MaterialGroup", osg::MaterialGroupBase::MaterialFieldMask},
                       {m_geometry->getContainerId(), "Geometry", osg::MaterialDrawableBase::MaterialFieldMask}}));
}

TEST_F(CoreMaterialTest, NullTakesTheMaterialAway)
{
    m_geometry->setMaterial(m_paint.get());
    EXPECT_TRUE(osg::setMaterial(m_geometry.get(), osg::MaterialPtr()));
    EXPECT_FALSE(m_geometry->getMaterial());
    EXPECT_EQ(m_paint->getRefCount(), 1u);
}

} // namespace
