#include "host/OSGSystem/PhysicalSurface.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Geometry.h"
#include "host/OSGSystem/SimpleMaterial.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "scene/ContainerRegistry.h"
#include "scene/MaterialLook.h"
#include "tests/scene/SceneGraphTest.h"
#include "tests/scene/SurfaceDifferences.h"

namespace
{

using osg::PhysicalSurface;
using osg::TextureSlot;

class PhysicalSurfaceTest : public SceneGraphTest
{
protected:
    static osg::RefPtr<osg::SimpleMaterialPtr> material(const PhysicalSurface& surface)
    {
        const osg::RefPtr<osg::SimpleMaterialPtr> result(osg::SimpleMaterialBase::create());
        osg::setSurface(result.get(), surface);
        return result;
    }
    static bool areEqual(const PhysicalSurface& a, const PhysicalSurface& b)
    {
        return osg::FieldContainer::isEqual(material(a).get(), material(b).get());
    }
};

TEST_F(PhysicalSurfaceTest, MaterialsOfEqualSurfacesAreEqual)
{
    const PhysicalSurface plain = surfacedifferences::surface();
    EXPECT_TRUE(areEqual(plain, surfacedifferences::surface()));
    for (const surfacedifferences::Difference& difference : surfacedifferences::all()) {
        PhysicalSurface a = plain, b = plain;
        difference.make(a);
        difference.make(b);
        EXPECT_TRUE(areEqual(a, b)) << difference.what;
    }
}

TEST_F(PhysicalSurfaceTest, EachSingleDifferenceKeepsMaterialsApart)
{
    const PhysicalSurface plain = surfacedifferences::surface();
    for (const surfacedifferences::Difference& difference : surfacedifferences::all()) {
        PhysicalSurface other = plain;
        difference.make(other);
        EXPECT_FALSE(areEqual(plain, other)) << difference.what;
        EXPECT_FALSE(areEqual(other, plain)) << difference.what;
    }
}

TEST_F(PhysicalSurfaceTest, AMaterialWithASurfaceIsNoneWithout)
{
    const osg::RefPtr<osg::SimpleMaterialPtr> bare(osg::SimpleMaterialBase::create());
    EXPECT_FALSE(osg::FieldContainer::isEqual(bare.get(), material(surfacedifferences::surface()).get()));
}

TEST_F(PhysicalSurfaceTest, ACopyHasTheSameSurfaceAndSharesItsImages)
{
    const osg::RefPtr<osg::SimpleMaterialPtr> original = material(surfacedifferences::surface());
    const osg::RefPtr<osg::SimpleMaterialPtr> copy(
        osg::SimpleMaterialPtr(static_cast<osg::SimpleMaterial*>(osg::ContainerAccess::copy(*original.get()).get())));
    const osg::SimpleMaterialPtr copied = copy.get();
    ASSERT_TRUE(copied);
    EXPECT_TRUE(osg::FieldContainer::isEqual(original.get(), copied));
    EXPECT_EQ(osg::surfaceOf(copied).textures.at(TextureSlot::BaseColor).image,
              osg::surfaceOf(original.get()).textures.at(TextureSlot::BaseColor).image);
    PhysicalSurface other = osg::surfaceOf(copied);
    other.metalness = 1;
    osg::setSurface(copied, other);
    EXPECT_EQ(osg::surfaceOf(original.get()).metalness, 0) << "the copy is one of its own";
}

TEST_F(PhysicalSurfaceTest, ADeepCloneSharesTheImages)
{
    const osg::GeometryPtr geometry = osg::GeometryBase::create();
    geometry->setMaterial(material(surfacedifferences::surface()).get());
    const osg::RefPtr<osg::NodePtr> node(osg::makeNodeFor(geometry));
    const osg::RefPtr<osg::NodePtr> clone(osg::deepCloneTree(node.get(), "'"));
    const auto cloned = osg::fcCast<osg::Geometry>(clone->getCore());
    EXPECT_EQ(osg::surfaceOf(cloned->getMaterial()), surfacedifferences::surface());
}

TEST_F(PhysicalSurfaceTest, ImagesGoWithTheLastMaterial)
{
    std::weak_ptr<const osg::EncodedImage> watched;
    {
        const osg::RefPtr<osg::SimpleMaterialPtr> holder = material(surfacedifferences::surface());
        watched = osg::surfaceOf(holder.get()).textures.at(TextureSlot::BaseColor).image;
        EXPECT_FALSE(watched.expired());
    }
    EXPECT_TRUE(watched.expired());
}

} // namespace
