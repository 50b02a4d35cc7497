#include "files/glb/GlbPlacement.h"

#include "scene/MatrixMath.h"

#include <algorithm>
#include <cmath>

namespace files::glb
{

namespace
{

/// How far a matrix may be from what rotation and scale make of it. glTF demands that it is no more than rounding, and
/// validators have a fixed measure for that.
constexpr float maxDeviation = 1e-5f;
/// The share of its longest axis below which an axis counts as flat.
constexpr float flatness = 1e-6f;

/// True when `matrix` is told by rotation and scale, up to rounding, and can be turned back.
bool isPlain(const osg::Matrix& matrix, const osg::Components& parts)
{
    if (parts.scaleOrientation != osg::Quaternion())
        return false;
    const auto [least, most] = std::minmax({std::abs(parts.scale.x), std::abs(parts.scale.y), std::abs(parts.scale.z)});
    const osg::Matrix told = osg::composed(parts);
    return least > flatness * most && std::equal(matrix.values.begin(), matrix.values.end(), told.values.begin(),
                                                 [](float a, float b) { return std::abs(a - b) <= maxDeviation; });
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

/// With six digits; 1 for what is not far from it, and for what no size can be.
double roundedScale(double scale)
{
    constexpr double nearly = 1e-5;
    if (!(scale > 1e-9 && scale < 1e9) || std::abs(scale - 1) < nearly)
        return 1;
    const double digits = std::pow(10, 5 - std::floor(std::log10(scale)));
    return std::round(scale * digits) / digits;
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
    const osg::Components parts = osg::decomposed(matrix);
    if (isPlain(matrix, parts)) {
        result.outer["matrix"] = matrix.values;
        return result;
    }
    result.outer["translation"] = listOf(parts.translation);
    result.outer["rotation"] = listOf(product(parts.rotation, parts.scaleOrientation));
    result.outer["scale"] = listOf(parts.scale);
    if (parts.scaleOrientation != osg::Quaternion())
        result.inner["rotation"] = listOf(inverse(parts.scaleOrientation));
    return result;
}

Json shrunk(const Json& outer)
{
    constexpr float size = 1e-6f;
    Json result = {{"scale", {size, size, size}}};
    if (const auto matrix = outer.find("matrix"); matrix != outer.end())
        result["translation"] = {(*matrix)[12], (*matrix)[13], (*matrix)[14]};
    else if (outer.contains("translation"))
        result["translation"] = outer["translation"];
    return result;
}

double scaleOf(const osg::Matrix& m)
{
    const double volume = double(m[0]) * (double(m[5]) * m[10] - double(m[6]) * m[9]) -
                          double(m[4]) * (double(m[1]) * m[10] - double(m[2]) * m[9]) +
                          double(m[8]) * (double(m[1]) * m[6] - double(m[2]) * m[5]);
    const double scale = std::cbrt(std::abs(volume));
    return scale > 1e-9 && scale < 1e9 ? scale : 1;
}

Unscaled unscaled(const osg::Matrix& matrix, double above)
{
    const double own = roundedScale(std::hypot(double(matrix[0]), double(matrix[1]), double(matrix[2])));
    Unscaled result{matrix, roundedScale(above * own)};
    for (const int axis : {0, 4, 8})
        for (int i = axis; i < axis + 3; ++i)
            result.matrix[i] = static_cast<float>(matrix[i] / own);
    for (int i = 12; i < 15; ++i)
        result.matrix[i] = static_cast<float>(matrix[i] * above);
    return result;
}

} // namespace files::glb
