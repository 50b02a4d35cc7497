#include "cad/visualization/CADNodeRecord.h"

#include "host/OSGSystem/ComponentTransform.h"
#include "host/OSGSystem/Transform3D.h"
#include "scene/EditAudit.h"
#include "tests/standalone/session/SessionTest.h"

#include <cmath>

namespace HB::Visualization
{

namespace
{

using testing::ElementsAre;
using testing::FloatNear;
using testing::IsEmpty;

class RecordPlacementTest : public SessionTest
{
protected:
    RecordPlacementTest()
    {
        m_node->setCore(m_core);
        m_record.setNode(m_node);
    }

    const osg::NodePtr m_node = addGroup(m_session.sceneRoot(), "carrier");
    const osg::Transform3DPtr m_core = osg::Transform3D::create();
    CADNodeRecord m_record{nullptr};
};

TEST_F(RecordPlacementTest, TranslationIsThatOfTheCore)
{
    m_record.setTranslation(1, -2, 3.5F);
    EXPECT_TRUE(m_core->getTranslation() == (osg::Vec3f{1, -2, 3.5F}));
    m_core->setTranslation({4, 5, 6});
    EXPECT_THAT(m_record.getTranslation(), ElementsAre(4, 5, 6));
}

TEST_F(RecordPlacementTest, ScaleIsThatOfTheCore)
{
    m_record.setScale(2, 3, 4);
    EXPECT_TRUE(m_core->getScale() == (osg::Vec3f{2, 3, 4}));
    EXPECT_THAT(m_record.getScale(), ElementsAre(2, 3, 4));
}

TEST_F(RecordPlacementTest, RotationIsMadeOfAnAxisOfAnyLengthAndAnAngle)
{
    m_record.setRotation(0, 0, 5, 1.5707964F);
    const osg::Quaternion rotation = m_core->getRotation();
    EXPECT_NEAR(rotation.x, 0, 1e-6);
    EXPECT_NEAR(rotation.y, 0, 1e-6);
    EXPECT_NEAR(rotation.z, 0.70710678, 1e-6);
    EXPECT_NEAR(rotation.w, 0.70710678, 1e-6);
}

TEST_F(RecordPlacementTest, RotationComesBackAsAUnitAxisAndTheAngleInRadians)
{
    m_record.setRotation(2, 0, -2, 2);
    EXPECT_THAT(m_record.getRotation(), ElementsAre(FloatNear(0.70710678F, 1e-5F), FloatNear(0, 1e-5F),
                                                    FloatNear(-0.70710678F, 1e-5F), FloatNear(2, 1e-5F)));
}

TEST_F(RecordPlacementTest, AnAxisWithoutLengthIsNoRotation)
{
    m_record.setRotation(0, 1, 0, 1);
    m_record.setRotation(0, 0, 0, 1);
    EXPECT_TRUE(m_core->getRotation() == (osg::Quaternion{0, 0, 0, 1}));
    EXPECT_THAT(m_record.getRotation(), ElementsAre(0, 0, 1, 0));
    m_record.setRotation(0, 1e-6F, 0, 1);
    EXPECT_TRUE(m_core->getRotation() == (osg::Quaternion{0, 0, 0, 1}));
}

TEST_F(RecordPlacementTest, AnAxisJustOverTheLimitHasADirection)
{
    m_record.setRotation(0, 2e-6F, 0, 2);
    EXPECT_NEAR(m_core->getRotation().y, std::sin(1.0), 1e-6);
}

TEST_F(RecordPlacementTest, AComponentTransformWillDo)
{
    m_node->setCore(osg::ComponentTransform::create());
    m_record.setTranslation(7, 8, 9);
    EXPECT_THAT(m_record.getTranslation(), ElementsAre(7, 8, 9));
}

TEST_F(RecordPlacementTest, APlainTransformHasNoComponents)
{
    const osg::TransformPtr plain = osg::Transform::create();
    m_node->setCore(plain);
    m_record.setTranslation(1, 2, 3);
    m_record.setRotation(0, 0, 1, 1);
    m_record.setScale(2, 2, 2);
    EXPECT_TRUE(plain->isIdentity());
    EXPECT_THAT(m_record.getTranslation(), IsEmpty());
    EXPECT_THAT(m_record.getRotation(), IsEmpty());
    EXPECT_THAT(m_record.getScale(), IsEmpty());
}

TEST_F(RecordPlacementTest, WithoutNodeOrCoreNothingHappens)
{
    for (const osg::NodePtr& node : {osg::NodePtr(), m_node}) {
        m_node->setCore(osg::NodeCorePtr());
        m_record.setNode(node);
        m_record.setTranslation(1, 2, 3);
        m_record.setRotation(0, 0, 1, 1);
        m_record.setScale(2, 2, 2);
        EXPECT_THAT(m_record.getTranslation(), IsEmpty());
        EXPECT_THAT(m_record.getRotation(), IsEmpty());
        EXPECT_THAT(m_record.getScale(), IsEmpty());
    }
}

TEST_F(RecordPlacementTest, TheCoreIsEditedWithAllFields)
{
    const osg::EditAudit audit;
    m_record.setTranslation(1, 2, 3);
    m_record.setRotation(0, 0, 1, 1);
    m_record.setScale(2, 2, 2);
    const osg::EditAudit::Record bracket{m_core->getContainerId(), "Transform3D", 0xFFFFFFFF};
    EXPECT_THAT(audit.brackets(), ElementsAre(bracket, bracket, bracket));
    EXPECT_THAT(audit.unbracketed(), IsEmpty());
}

} // namespace

} // namespace HB::Visualization
