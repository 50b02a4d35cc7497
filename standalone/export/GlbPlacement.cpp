#include "standalone/export/GlbPlacement.h"

#include "standalone/OSGSystem/MatrixMath.h"

#include <algorithm>
#include <cmath>

namespace glb
{

namespace
{

/// The cosine up to which two axes count as upright to each other.
constexpr double uprightCosine = 1e-6;

double dot(const osg::Matrix& matrix, unsigned a, unsigned b)
{
    double result = 0;
    for (unsigned row = 0; row < 3; ++row)
        result += double(matrix[a * 4 + row]) * double(matrix[b * 4 + row]);
    return result;
}

/// True when the axes are upright to each other and none is flat: then a matrix can be told by rotation and scale, up
/// to rounding, as glTF demands of matrices.
bool isUpright(const osg::Matrix& matrix)
{
    const double lengths[] = {std::sqrt(dot(matrix, 0, 0)), std::sqrt(dot(matrix, 1, 1)), std::sqrt(dot(matrix, 2, 2))};
    const auto upright = [&](unsigned a, unsigned b) {
        return std::abs(dot(matrix, a, b)) <= uprightCosine * lengths[a] * lengths[b];
    };
    const bool isFlat = *std::min_element(lengths, lengths + 3) < 1e-6 * *std::max_element(lengths, lengths + 3);
    return !isFlat && lengths[0] > 0 && upright(0, 1) && upright(0, 2) && upright(1, 2);
}

Json listOf(const osg::Vec3f& v)
{
    return {v.x, v.y, v.z};
}

Json listOf(const osg::Quaternion& q)
{
    return {q.x, q.y, q.z, q.w};
}

osg::Quaternion product(const osg::Quaternion& a, const osg::Quaternion& b)
{
    return {a.w * b.x + a.x * b.w + a.y * b.z - a.z * b.y, a.w * b.y - a.x * b.z + a.y * b.w + a.z * b.x,
            a.w * b.z + a.x * b.y - a.y * b.x + a.z * b.w, a.w * b.w - a.x * b.x - a.y * b.y - a.z * b.z};
}

osg::Quaternion inverse(const osg::Quaternion& q)
{
    return {-q.x, -q.y, -q.z, q.w};
}

osg::Matrix affine(osg::Matrix matrix)
{
    matrix[3] = matrix[7] = matrix[11] = 0;
    matrix[15] = 1;
    return matrix;
}

} // namespace

std::optional<GlbPlacement> placementOf(const osg::Matrix& given)
{
    const osg::Matrix matrix = affine(given);
    if (!std::all_of(matrix.values.begin(), matrix.values.end(), [](float value) { return std::isfinite(value); }))
        return std::nullopt;
    GlbPlacement result;
    if (matrix.isIdentity())
        return result;
    if (isUpright(matrix)) {
        result.outer["matrix"] = matrix.values;
        return result;
    }
    const osg::Components parts = osg::decomposed(matrix);
    result.outer["translation"] = listOf(parts.translation);
    result.outer["rotation"] = listOf(product(parts.rotation, parts.scaleOrientation));
    result.outer["scale"] = listOf(parts.scale);
    if (parts.scaleOrientation != osg::Quaternion())
        result.inner["rotation"] = listOf(inverse(parts.scaleOrientation));
    return result;
}

} // namespace glb
