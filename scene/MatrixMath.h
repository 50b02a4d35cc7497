#pragma once

#include "host/OSGSystem/Math.h"

#include <optional>

namespace osg
{

/// `a` after `b`: the matrix of the point transform that applies `b` first.
Matrix operator*(const Matrix& a, const Matrix& b);

/// The inverse of an affine matrix; none when it flattens space.
std::optional<Matrix> inverted(const Matrix& matrix);

Vec3f transformPoint(const Matrix& matrix, const Vec3f& point);
Vec3f transformVector(const Matrix& matrix, const Vec3f& vector);

Matrix translationMatrix(const Vec3f& translation);
Matrix scaleMatrix(const Vec3f& scale);
Matrix rotationMatrix(const Quaternion& rotation);

/// The parts of an affine matrix: translation * rotation * orientation * scale * orientation^-1.
struct Components {
    Vec3f translation;
    Quaternion rotation;
    Vec3f scale = {1, 1, 1};
    Quaternion scaleOrientation;
};

/// Polar decomposition (K. Shoemake, T. Duff, "Matrix Animation and Polar Decomposition", 1992). The orientation is the
/// identity when the stretch lies along the axes; a mirrored matrix gives negative scales.
Components decomposed(const Matrix& matrix);

Matrix composed(const Components& components);

} // namespace osg
