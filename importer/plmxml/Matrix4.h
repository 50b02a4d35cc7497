#pragma once

#include "importer/plmxml/SourceDocument.h"

#include <array>
#include <optional>

namespace importer::plmxml
{

/// Four rows of four: the axes and, in the last row, the translation. A point is a row, so that what holds in the
/// parent's frame stands on the right of a product. Lengths as the document gives them.
using Matrix4 = std::array<double, 16>;

/// The matrix that moves nothing.
inline constexpr Matrix4 Identity4 = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};

/// What the element Transform says; by its type it has 16, 9, 3 or 1 numbers. Nothing for another count and for words
/// that are no finite numbers. The last number of sixteen divides the translation, and counts as 1 when it is 0.
std::optional<Matrix4> matrixOf(const pugi::xml_node& transform);
/// Whether the last of sixteen numbers is 1, or there are not sixteen.
bool hasPlainEnd(const pugi::xml_node& transform);

/// First `inner`, then `outer`.
Matrix4 operator*(const Matrix4& inner, const Matrix4& outer);

/// Nothing for a matrix that flattens space.
std::optional<Matrix4> inverseOf(const Matrix4& matrix);

/// Whether no two numbers differ by more than 1e-6, those of long translations by that share of their length.
bool isNear(const Matrix4& a, const Matrix4& b);

} // namespace importer::plmxml
