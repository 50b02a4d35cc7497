#include "scene/EigenValues.h"

#include <gtest/gtest.h>

namespace
{

/// Turns x to y, doubles z, and moves by (10, 20, 30).
const osg::Matrix placement{{0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 2, 0, 10, 20, 30, 1}};

TEST(EigenValues, AVectorKeepsItsElements)
{
    EXPECT_EQ(osg::toEigen(osg::Vec3f{1, 2, 3}), Eigen::Vector3f(1, 2, 3));
}

TEST(EigenValues, AMatrixActsOnColumns)
{
    const Eigen::Vector4d moved = osg::toEigen(placement) * Eigen::Vector4d(1, 2, 3, 1);
    EXPECT_EQ(moved, Eigen::Vector4d(8, 21, 36, 1));
}

TEST(EigenValues, AMatrixComesBackRoundedToSinglePrecision)
{
    Eigen::Matrix4d matrix = osg::toEigen(placement);
    matrix(0, 3) = 10.000000001;
    EXPECT_EQ(osg::fromEigen(matrix), placement);
}

} // namespace
