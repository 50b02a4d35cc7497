#include "host/znKernelServices/znReferenceService.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/FieldContainerFactory.h"
#include "host/znKernelServices/znKernelServiceFactory.h"
#include "host/znOpenSGExt/ExtReference.h"
#include "scene/EditAudit.h"
#include "tests/standalone/session/SessionTest.h"

namespace
{

class ReferenceServiceTest : public SessionTest
{
protected:
    zndReferenceNode create(const zndNode& parent)
    {
        return znKernelServiceFactory::the()->get<znReferenceService>()->createReference(parent);
    }
    static osg::NodePtr nodeOf(const zndObject& object)
    {
        const auto id = static_cast<unsigned>(object.getObjectId());
        return osg::fcCast<osg::Node>(osg::FieldContainerFactory::the()->getContainer(id));
    }

    const osg::NodePtr m_parent = addGroup(m_session.sceneRoot(), "parent");
};

TEST_F(ReferenceServiceTest, MakesAnEmptyReferenceAsTheLastChildOfItsParent)
{
    addGroup(m_parent, "first");
    const zndReferenceNode reference = create(zndNode(m_parent->getContainerId()));
    EXPECT_TRUE(reference.isValid());
    EXPECT_TRUE(reference.isTypeOf(&zndReferenceNode::staticMetaObject));
    EXPECT_FALSE(reference.hasSmartReference());
    ASSERT_EQ(m_parent->getNChildren(), 2u);
    EXPECT_TRUE(m_parent->getChild(1) == nodeOf(reference));
    EXPECT_EQ(osg::fcCast<osg::ExtReference>(nodeOf(reference)->getCore())->getState(), 0u);
}

TEST_F(ReferenceServiceTest, TheResultCanBeAssignedToAnyWrapper)
{
    zndObject object;
    object = create(zndNode(m_parent->getContainerId()));
    EXPECT_TRUE(object.isTypeOf(&zndReferenceNode::staticMetaObject));
}

TEST_F(ReferenceServiceTest, WithoutAParentTheReferenceStandsAlone)
{
    const zndReferenceNode reference = create(zndNode());
    EXPECT_EQ(m_session.sceneRoot()->getNChildren(), 1u);
    const osg::RefPtr<osg::NodePtr> taken(nodeOf(reference));
    ASSERT_TRUE(taken);
    EXPECT_EQ(taken->getRefCount(), 1u);
    EXPECT_FALSE(taken->getParent());
}

TEST_F(ReferenceServiceTest, TheReferenceIsHungWithinTheBracketOfTheChildren)
{
    const osg::EditAudit audit;
    create(zndNode(m_parent->getContainerId()));
    EXPECT_THAT(audit.brackets(), testing::Contains(osg::EditAudit::Record{m_parent->getContainerId(), "Node",
                                                                           osg::Node::ChildrenFieldMask}));
    EXPECT_THAT(audit.unbracketed(), testing::IsEmpty());
}

} // namespace
