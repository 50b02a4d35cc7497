#pragma once

#include "files/glb/packing/PackedFile.h"

#include <array>

namespace files::glb::packing
{

/// Numbers for each of the axes.
using Vector = std::array<double, 3>;

/// An affine transform, column by column, the last one the translation.
using Affine = std::array<Vector, 4>;

constexpr Affine identityAffine = {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {0, 0, 0}}};

/// `v` with the fourth coordinate `w`: 1 for points, 0 for directions.
Vector transformed(const Affine& m, const Vector& v, double w);

/// The transform that applies `b` first.
Affine product(const Affine& a, const Affine& b);

/// What rotation by the unit quaternion (x, y, z, w), and scale before it and translation behind it, make.
Affine composed(const Vector& translation, const std::array<double, 4>& rotation, const Vector& scale);

/// The transform that `node` of a document tells by its matrix, or by translation, rotation and scale.
Affine placeOf(const Json& node);

/// How `m` changes volumes; negative when it mirrors.
double determinant(const Affine& m);

} // namespace files::glb::packing
