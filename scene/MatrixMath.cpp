#include "scene/MatrixMath.h"

#include "scene/EigenValues.h"

#include <Eigen/Dense>

namespace osg
{

namespace
{

Eigen::Quaterniond unitQuaternion(const Quaternion& q)
{
    return Eigen::Quaterniond(double(q.w), double(q.x), double(q.y), double(q.z)).normalized();
}

Quaternion fromRotation(const Eigen::Matrix3d& rotation)
{
    Eigen::Quaterniond q(rotation);
    q.normalize();
    if (q.w() < 0)
        q.coeffs() = -q.coeffs();
    return {float(q.x()), float(q.y()), float(q.z()), float(q.w())};
}

/// The eigenvectors of a stretch, each in the column of the axis that it is nearest to, as a rotation.
Eigen::Matrix3d alignedAxes(const Eigen::Matrix3d& vectors)
{
    Eigen::Matrix3d result;
    bool taken[3] = {};
    for (int axis = 0; axis < 3; ++axis) {
        int best = -1;
        for (int column = 0; column < 3; ++column)
            if (!taken[column] && (best < 0 || std::abs(vectors(axis, column)) > std::abs(vectors(axis, best))))
                best = column;
        taken[best] = true;
        result.col(axis) = vectors.col(best) * (vectors(axis, best) < 0 ? -1.0 : 1.0);
    }
    if (result.determinant() < 0)
        result.col(2) = -result.col(2);
    return result;
}

bool isDiagonal(const Eigen::Matrix3d& matrix)
{
    const double largest = matrix.diagonal().cwiseAbs().maxCoeff();
    return (matrix - Eigen::Matrix3d(matrix.diagonal().asDiagonal())).cwiseAbs().maxCoeff() <= 1e-6 * largest;
}

} // namespace

Matrix operator*(const Matrix& a, const Matrix& b)
{
    return fromEigen(toEigen(a) * toEigen(b));
}

std::optional<Matrix> inverted(const Matrix& matrix)
{
    const Eigen::Matrix4d wide = toEigen(matrix);
    Eigen::Matrix4d inverse;
    double determinant = 0;
    bool invertible = false;
    wide.computeInverseAndDetWithCheck(inverse, determinant, invertible, 0.0);
    if (!invertible)
        return std::nullopt;
    return fromEigen(inverse);
}

Vec3f transformPoint(const Matrix& m, const Vec3f& p)
{
    const Vec3f v = transformVector(m, p);
    return {v.x + m[12], v.y + m[13], v.z + m[14]};
}

Vec3f transformVector(const Matrix& m, const Vec3f& v)
{
    return {m[0] * v.x + m[4] * v.y + m[8] * v.z, m[1] * v.x + m[5] * v.y + m[9] * v.z,
            m[2] * v.x + m[6] * v.y + m[10] * v.z};
}

Matrix translationMatrix(const Vec3f& translation)
{
    Matrix result;
    result[12] = translation.x;
    result[13] = translation.y;
    result[14] = translation.z;
    return result;
}

Matrix scaleMatrix(const Vec3f& scale)
{
    Matrix result;
    result[0] = scale.x;
    result[5] = scale.y;
    result[10] = scale.z;
    return result;
}

Matrix rotationMatrix(const Quaternion& rotation)
{
    Eigen::Matrix4d result = Eigen::Matrix4d::Identity();
    result.topLeftCorner<3, 3>() = unitQuaternion(rotation).toRotationMatrix();
    return fromEigen(result);
}

Components decomposed(const Matrix& matrix)
{
    Components result;
    result.translation = {matrix[12], matrix[13], matrix[14]};
    const Eigen::Matrix3d linear = toEigen(matrix).topLeftCorner<3, 3>();
    const Eigen::JacobiSVD<Eigen::Matrix3d> svd(linear, Eigen::ComputeFullU | Eigen::ComputeFullV);
    Eigen::Matrix3d rotation = svd.matrixU() * svd.matrixV().transpose();
    if (rotation.determinant() < 0)
        rotation = -rotation;
    const Eigen::Matrix3d stretch = rotation.transpose() * linear;
    result.rotation = fromRotation(rotation);
    if (isDiagonal(stretch)) {
        result.scale = {float(stretch(0, 0)), float(stretch(1, 1)), float(stretch(2, 2))};
        return result;
    }
    const Eigen::Matrix3d axes = alignedAxes(svd.matrixV());
    const Eigen::Vector3d scale = (axes.transpose() * stretch * axes).diagonal();
    result.scale = {float(scale.x()), float(scale.y()), float(scale.z())};
    result.scaleOrientation = fromRotation(axes);
    return result;
}

Matrix composed(const Components& components)
{
    const Eigen::Matrix3d axes = unitQuaternion(components.scaleOrientation).toRotationMatrix();
    const Eigen::Vector3d scale(double(components.scale.x), double(components.scale.y), double(components.scale.z));
    Eigen::Matrix4d result = Eigen::Matrix4d::Identity();
    result.topLeftCorner<3, 3>() =
        unitQuaternion(components.rotation).toRotationMatrix() * axes * scale.asDiagonal() * axes.transpose();
    const Vec3f& t = components.translation;
    result.topRightCorner<3, 1>() = Eigen::Vector3d(double(t.x), double(t.y), double(t.z));
    return fromEigen(result);
}

} // namespace osg
