#pragma once

#include "host/OSGSystem/Math.h"

#include <Eigen/Core>

/// The way between the scene's values and Eigen's. Both keep matrices column by column for column vectors. The scene
/// stores single precision, calculations with matrices are done in double.
namespace osg
{

inline Eigen::Vector3f toEigen(const Vec3f& vector)
{
    return {vector.x, vector.y, vector.z};
}

inline Eigen::Matrix4d toEigen(const Matrix& matrix)
{
    return Eigen::Map<const Eigen::Matrix4f>(matrix.values.data()).cast<double>();
}

/// Rounds to single precision.
inline Matrix fromEigen(const Eigen::Matrix4d& matrix)
{
    Matrix result;
    Eigen::Map<Eigen::Matrix4f>(result.values.data()) = matrix.cast<float>();
    return result;
}

} // namespace osg
