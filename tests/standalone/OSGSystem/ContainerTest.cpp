#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/FieldContainerFactory.h"
#include "host/OSGSystem/Geometry.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/Node.h"
#include "host/OSGSystem/SimpleMaterial.h"
#include "host/znOpenSGExt/ExtReference.h"
#include "tests/standalone/OSGSystem/SceneGraphTest.h"

namespace
{

using ContainerTest = SceneGraphTest;

TEST_F(ContainerTest, ANullPointerHasSizeZeroAndAnInvalidParentPosition)
{
    const osg::NodePtr null;
    EXPECT_EQ(null.get(), nullptr);
    EXPECT_EQ(null.getContainerSize(), 0);
    EXPECT_EQ(null.getParentFieldPos(), osg::FieldContainerPtrBase::InvalidParentEPos);
    EXPECT_TRUE(null == osg::NullFC);
    EXPECT_FALSE(null);
}

TEST_F(ContainerTest, APointerIsTwoSmallNumbersAndAnAddress)
{
    EXPECT_EQ(sizeof(osg::NodePtr), 16u);
    EXPECT_EQ(sizeof(osg::MaterialPtr), 16u);
}

TEST_F(ContainerTest, ValidityAndEqualityLookAtTheAddressAlone)
{
    const osg::NodePtr node = osg::Node::create();
    const osg::NodePtr bound(node.get(), 7, 3);
    EXPECT_EQ(bound.getContainerSize(), 7);
    EXPECT_EQ(bound.getParentFieldPos(), 3);
    EXPECT_TRUE(bound == node);
    EXPECT_TRUE(osg::NodePtr(nullptr, 7, 3) == osg::NullFC);
    discard(node);
}

TEST_F(ContainerTest, CopyingAPointerLeavesTheCountAlone)
{
    const osg::RefPtr<osg::NodePtr> holder(osg::Node::create());
    const osg::NodePtr copy = holder;
    EXPECT_EQ(copy->getRefCount(), 1u);
    copy.addRef();
    EXPECT_EQ(copy->getRefCount(), 2u);
    copy.subRef();
    EXPECT_EQ(copy->getRefCount(), 1u);
}

TEST_F(ContainerTest, AHolderMovesTheCount)
{
    const osg::RefPtr<osg::NodePtr> first(osg::Node::create());
    osg::RefPtr<osg::NodePtr> second(osg::Node::create());
    second = first;
    EXPECT_EQ(first->getRefCount(), 2u);
    second = osg::NodePtr();
    EXPECT_EQ(first->getRefCount(), 1u);
    EXPECT_EQ(osg::livingContainerCount(), 1u);
}

TEST_F(ContainerTest, IdsAreDenseFromOneInOrderAndNotReused)
{
    const osg::NodePtr first = osg::Node::create();
    const osg::NodePtr second = osg::Node::create();
    EXPECT_EQ(first->getContainerId(), 1u);
    EXPECT_EQ(second->getContainerId(), 2u);
    discard(second);
    const osg::NodePtr third = osg::Node::create();
    EXPECT_EQ(third->getContainerId(), 3u);
    discard(first);
    discard(third);
}

TEST_F(ContainerTest, TheFactoryFindsTheLivingByTheirIds)
{
    const osg::NodePtr node = osg::Node::create();
    osg::FieldContainerFactory* factory = osg::FieldContainerFactory::the();
    EXPECT_TRUE(factory->getContainer(1) == node);
    EXPECT_TRUE(factory->getContainer(0) == osg::NullFC);
    EXPECT_TRUE(factory->getContainer(2) == osg::NullFC);
    EXPECT_TRUE(factory->getContainer(0xFFFFFFFFu) == osg::NullFC);
    discard(node);
    EXPECT_TRUE(factory->getContainer(1) == osg::NullFC);
}

TEST_F(ContainerTest, ASweepTakesWhatIsLeftAndStartsTheIdsAnew)
{
    const osg::NodePtr parent = osg::Node::create();
    parent.addRef();
    osg::setName(parent, "forgotten");
    parent->addChild(osg::Node::create());
    const std::vector<osg::LivingContainer> left = osg::livingContainers();
    ASSERT_EQ(left.size(), 3u);
    EXPECT_EQ(left[0].type, "Node");
    EXPECT_EQ(left[0].name, "forgotten");
    EXPECT_EQ(left[0].references, 1u);
    osg::sweepContainers();
    EXPECT_EQ(osg::livingContainerCount(), 0u);
    const osg::NodePtr next = osg::Node::create();
    EXPECT_EQ(next->getContainerId(), 1u);
    discard(next);
}

TEST_F(ContainerTest, ADownCastAcceptsTheTypeAndWhatDerivesFromIt)
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

TEST_F(ContainerTest, ADownCastDoesNotAcceptAnAncestor)
{
    const osg::RefPtr<osg::TransformPtr> transform(osg::TransformBase::create());
    EXPECT_FALSE(osg::fcCast<osg::Transform3D>(transform.get()));
    EXPECT_FALSE(osg::fcCast<osg::ExtReference>(transform.get()));
}

TEST_F(ContainerTest, TypesTellTheirNameTheirChainAndTheirGroup)
{
    EXPECT_STREQ(osg::GeometryBase::_type.getName(), "Geometry");
    EXPECT_EQ(osg::GeometryBase::_type.getParent(), &osg::MaterialDrawableBase::_type);
    EXPECT_EQ(osg::FieldContainer::_type.getParent(), nullptr);
    EXPECT_EQ(osg::GeometryBase::_type.getGroupId(), osg::NodeCore::_type.getGroupId());
    EXPECT_NE(osg::MaterialBase::_type.getGroupId(), osg::NodeCore::_type.getGroupId());
    EXPECT_NE(osg::GeometryBase::_type.getId(), osg::MaterialDrawableBase::_type.getId());
}

osg::SimpleMaterialPtr paint(float red)
{
    const osg::SimpleMaterialPtr material = osg::SimpleMaterialBase::create();
    material->setDiffuse({red, 0.25f, 0.125f});
    return material;
}

TEST_F(ContainerTest, EqualityComparesTheFieldsOfOneClass)
{
    const osg::RefPtr<osg::SimpleMaterialPtr> first(paint(0.5f)), second(paint(0.5f)), third(paint(0.75f));
    EXPECT_TRUE(osg::FieldContainer::isEqual(first.get(), second.get()));
    EXPECT_FALSE(osg::FieldContainer::isEqual(first.get(), third.get()));
    second->setTransparency(0.5f);
    EXPECT_FALSE(osg::FieldContainer::isEqual(first.get(), second.get()));
}

TEST_F(ContainerTest, EqualityLooksAtEachFieldOfAMaterial)
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

TEST_F(ContainerTest, EqualityIgnoresNames)
{
    const osg::RefPtr<osg::SimpleMaterialPtr> first(paint(0.5f)), second(paint(0.5f));
    osg::setName(first.get(), "Chrome");
    EXPECT_TRUE(osg::FieldContainer::isEqual(first.get(), second.get()));
    osg::setName(second.get(), "chrome");
    EXPECT_TRUE(osg::FieldContainer::isEqual(first.get(), second.get()));
}

TEST_F(ContainerTest, EqualityTellsClassesApartAndKnowsNull)
{
    const osg::RefPtr<osg::TransformPtr> plain(osg::TransformBase::create());
    const osg::RefPtr<osg::Transform3DPtr> derived(osg::Transform3DBase::create());
    EXPECT_FALSE(osg::FieldContainer::isEqual(plain.get(), derived.get()));
    EXPECT_FALSE(osg::FieldContainer::isEqual(plain.get(), osg::FieldContainerPtr()));
    EXPECT_TRUE(osg::FieldContainer::isEqual(osg::FieldContainerPtr(), osg::FieldContainerPtr()));
}

TEST_F(ContainerTest, NamesComeGoAndChange)
{
    const osg::RefPtr<osg::NodePtr> node(osg::Node::create());
    EXPECT_EQ(osg::getName(node.get()), nullptr);
    osg::setName(node.get(), "Gehäuse 壳体");
    EXPECT_STREQ(osg::getName(node.get()), "Gehäuse 壳体");
    osg::setName(node.get(), "lid");
    EXPECT_STREQ(osg::getName(node.get()), "lid");
    osg::setName(node.get(), "");
    EXPECT_EQ(osg::getName(node.get()), nullptr);
    EXPECT_EQ(osg::getName(osg::NodePtr()), nullptr);
    EXPECT_EQ(osg::livingContainerCount(), 1u);
}

TEST_F(ContainerTest, FileReferencesAreCountedByTheReferenceCore)
{
    const osg::FileReferencePtr file = osg::FileReferenceBase::create();
    {
        const osg::RefPtr<osg::ExtReferencePtr> first(osg::ExtReferenceBase::create());
        const osg::RefPtr<osg::ExtReferencePtr> second(osg::ExtReferenceBase::create());
        first->setSourceFile(file);
        second->setSmartFile(file);
        second->setSourceFile(file);
        EXPECT_EQ(file->getRefCount(), 3u);
        EXPECT_TRUE(first->getSourceFile() == file);
        EXPECT_TRUE(first->getSmartFile() == osg::NullFC);
    }
    EXPECT_EQ(osg::livingContainerCount(), 0u);
}

} // namespace
