#include "scene/MatrixMath.h"

#include <gtest/gtest.h>

namespace
{

constexpr float half = 0.70710678f;

TEST(MatrixMath, AProductAppliesTheRightFactorFirst)
{
    const osg::Matrix product = osg::translationMatrix({10, 0, 0}) * osg::scaleMatrix({2, 2, 2});
    EXPECT_EQ(osg::transformPoint(product, {1, 1, 1}), (osg::Vec3f{12, 2, 2}));
    EXPECT_EQ(osg::transformVector(product, {1, 1, 1}), (osg::Vec3f{2, 2, 2}));
}

TEST(MatrixMath, TheInverseUndoesAndAFlatMatrixHasNone)
{
    const osg::Matrix matrix = osg::translationMatrix({10, 5, 0}) * osg::rotationMatrix({0, 0, half, half});
    const auto inverse = osg::inverted(matrix);
    ASSERT_TRUE(inverse);
    const osg::Matrix product = *inverse * matrix;
    for (unsigned i = 0; i < 16; ++i)
        EXPECT_NEAR(product[i], osg::Matrix()[i], 1e-5f) << "element " << i;
    EXPECT_FALSE(osg::inverted(osg::scaleMatrix({1, 0, 1})));
}

} // namespace
