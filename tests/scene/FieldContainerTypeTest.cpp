#include "host/OSGSystem/FieldContainerType.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Geometry.h"
#include "host/OSGSystem/Material.h"
#include "host/OSGSystem/Node.h"
#include "host/znOpenSGExt/ExtReference.h"
#include "tests/scene/SceneGraphTest.h"

namespace
{

using FieldContainerTypeTest = SceneGraphTest;

TEST_F(FieldContainerTypeTest, ADownCastAcceptsTheTypeAndWhatDerivesFromIt)
{
    const osg::RefPtr<osg::ExtReferencePtr> reference(osg::ExtReferenceBase::create());
    const osg::FieldContainerPtr container = reference.get();
    EXPECT_TRUE(osg::fcCast<osg::ExtReference>(container));
    EXPECT_TRUE(osg::fcCast<osg::Transform3D>(container));
    EXPECT_TRUE(osg::fcCast<osg::ComponentTransform>(container));
    EXPECT_TRUE(osg::fcCast<osg::Transform>(container));
    EXPECT_TRUE(osg::fcCast<osg::Group>(container));
    EXPECT_FALSE(osg::fcCast<osg::Drawable>(container));
    EXPECT_FALSE(osg::fcCast<osg::Node>(container));
    EXPECT_FALSE(osg::fcCast<osg::Node>(osg::FieldContainerPtr()));
}

TEST_F(FieldContainerTypeTest, ADownCastDoesNotAcceptAnAncestor)
{
    const osg::RefPtr<osg::TransformPtr> transform(osg::TransformBase::create());
    EXPECT_FALSE(osg::fcCast<osg::Transform3D>(transform.get()));
    EXPECT_FALSE(osg::fcCast<osg::ExtReference>(transform.get()));
}

TEST_F(FieldContainerTypeTest, TypesTellTheirNameTheirChainAndTheirGroup)
{
    EXPECT_STREQ(osg::GeometryBase::_type.getName(), "Geometry");
    EXPECT_EQ(osg::GeometryBase::_type.getParent(), &osg::MaterialDrawableBase::_type);
    EXPECT_EQ(osg::FieldContainer::_type.getParent(), nullptr);
    EXPECT_EQ(osg::GeometryBase::_type.getGroupId(), osg::NodeCore::_type.getGroupId());
    EXPECT_NE(osg::MaterialBase::_type.getGroupId(), osg::NodeCore::_type.getGroupId());
    EXPECT_NE(osg::GeometryBase::_type.getId(), osg::MaterialDrawableBase::_type.getId());
}

} // namespace
