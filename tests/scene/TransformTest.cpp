#include "host/OSGSystem/Transform3D.h"
#include "scene/MatrixMath.h"
#include "tests/scene/SceneGraphTest.h"

#include <cmath>

namespace
{

using TransformTest = SceneGraphTest;

osg::Matrix matrixOf(std::array<float, 16> values)
{
    return osg::Matrix{values};
}

void expectNear(const osg::Matrix& actual, const osg::Matrix& expected, float tolerance = 1e-5f)
{
    for (unsigned i = 0; i < 16; ++i)
        EXPECT_NEAR(actual[i], expected[i], tolerance) << "element " << i;
}

void expectNear(const osg::Vec3f& actual, const osg::Vec3f& expected)
{
    EXPECT_NEAR(actual.x, expected.x, 1e-5);
    EXPECT_NEAR(actual.y, expected.y, 1e-5);
    EXPECT_NEAR(actual.z, expected.z, 1e-5);
}

constexpr float half = 0.70710678f;

TEST_F(TransformTest, ANewTransformIsTheIdentity)
{
    const osg::RefPtr<osg::TransformPtr> transform(osg::TransformBase::create());
    EXPECT_TRUE(transform->isIdentity());
    transform->setMatrix(osg::translationMatrix({0, 0, 5}));
    EXPECT_FALSE(transform->isIdentity());
}

TEST_F(TransformTest, AMatrixWithShearStaysExactlyAsGiven)
{
    const osg::Matrix sheared = matrixOf({1, 0, 0, 0, 0.3f, 1, 0, 0, 0, 0.7f, 2, 0, 1.5f, -2, 3, 1});
    const osg::RefPtr<osg::Transform3DPtr> transform(osg::Transform3DBase::create());
    transform->setMatrix(sheared);
    transform->getRotation();
    EXPECT_EQ(transform->getMatrix(), sheared);
}

TEST_F(TransformTest, ComponentsMakeTheMatrix)
{
    const osg::RefPtr<osg::ComponentTransformPtr> transform(osg::ComponentTransformBase::create());
    transform->setTranslation({10, 20, 30});
    transform->setRotation({0, 0, half, half}); // a quarter turn about Z
    transform->setScale({2, 3, 4});
    expectNear(transform->getMatrix(), matrixOf({0, 2, 0, 0, -3, 0, 0, 0, 0, 0, 4, 0, 10, 20, 30, 1}));
}

TEST_F(TransformTest, TheMatrixMakesTheComponents)
{
    const osg::RefPtr<osg::ComponentTransformPtr> transform(osg::ComponentTransformBase::create());
    transform->setMatrix(matrixOf({0, 2, 0, 0, -3, 0, 0, 0, 0, 0, 4, 0, 10, 20, 30, 1}));
    expectNear(transform->getTranslation(), {10, 20, 30});
    expectNear(transform->getScale(), {2, 3, 4});
    EXPECT_NEAR(transform->getRotation().z, half, 1e-6);
    EXPECT_NEAR(transform->getRotation().w, half, 1e-6);
}

TEST_F(TransformTest, AMirroredMatrixHasNegativeScales)
{
    const osg::Matrix mirrored = osg::scaleMatrix({-2, 3, 4});
    const osg::Components parts = osg::decomposed(mirrored);
    EXPECT_LT(parts.scale.x * parts.scale.y * parts.scale.z, 0);
    expectNear(osg::composed(parts), mirrored);
}

TEST_F(TransformTest, DecompositionAndCompositionAgreeOnAnyAffineMatrix)
{
    unsigned random = 7;
    const auto next = [&random] {
        random = random * 1664525u + 1013904223u;
        return static_cast<float>(random >> 8) / float(1 << 23) - 1.0f;
    };
    for (int round = 0; round < 200; ++round) {
        osg::Matrix matrix;
        for (const unsigned index : {0u, 1u, 2u, 4u, 5u, 6u, 8u, 9u, 10u, 12u, 13u, 14u})
            matrix[index] = 3 * next();
        expectNear(osg::composed(osg::decomposed(matrix)), matrix);
    }
}

TEST_F(TransformTest, ANewTranslationLeavesTheRestOfTheMatrixExactlyAsItWas)
{
    const osg::Matrix sheared = matrixOf({1, 0.1f, 0, 0, 0.3f, 1, 0, 0, 0, 0.7f, 2, 0, 1.5f, -2, 3, 1});
    const osg::RefPtr<osg::ComponentTransformPtr> transform(osg::ComponentTransformBase::create());
    transform->setMatrix(sheared);
    transform->setTranslation({7, 8, 9});
    osg::Matrix expected = sheared;
    expected[12] = 7;
    expected[13] = 8;
    expected[14] = 9;
    EXPECT_EQ(transform->getMatrix(), expected);
}

TEST_F(TransformTest, ANewRotationKeepsTheShear)
{
    const osg::RefPtr<osg::ComponentTransformPtr> transform(osg::ComponentTransformBase::create());
    const osg::Matrix shear = matrixOf({1, 0, 0, 0, 0.5f, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1});
    transform->setMatrix(shear);
    const osg::Quaternion original = transform->getRotation();
    transform->setRotation({1, 0, 0, 0});
    transform->setRotation(original);
    expectNear(transform->getMatrix(), shear);
}

TEST_F(TransformTest, AScaleOfZeroKeepsTheRotation)
{
    const osg::RefPtr<osg::ComponentTransformPtr> transform(osg::ComponentTransformBase::create());
    transform->setRotation({0, half, 0, half});
    transform->setScale({0, 0, 0});
    transform->setScale({1, 1, 1});
    expectNear(transform->getMatrix(), osg::rotationMatrix({0, half, 0, half}));
}

} // namespace
