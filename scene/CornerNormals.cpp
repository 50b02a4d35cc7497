#include "scene/CornerNormals.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace osg
{

namespace
{

/// Comparisons of faces at one point, together. Beyond that, faces keep their own normals.
constexpr std::uint64_t maxComparisons = 400'000'000;
/// Faces that differ by rounding alone are one plane.
constexpr float cosineTolerance = 1e-5f;

Vec3f operator+(const Vec3f& a, const Vec3f& b)
{
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}

float dot(const Vec3f& a, const Vec3f& b)
{
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

Vec3f normalized(const Vec3f& v)
{
    const float length = std::sqrt(dot(v, v));
    if (!(length > 0) || !std::isfinite(length))
        return {};
    return {v.x / length, v.y / length, v.z / length};
}

/// Twice the area along the normal (Newell's method), seen from the first corner so that far places cost no digits.
Vec3f areaOf(std::span<const Vec3f> points, std::span<const std::uint32_t> corners)
{
    const Vec3f& origin = points[corners[0]];
    double x = 0, y = 0, z = 0;
    for (std::size_t i = 1; i + 1 < corners.size(); ++i) {
        const Vec3f& b = points[corners[i]];
        const Vec3f& c = points[corners[i + 1]];
        const double bx = double(b.x) - origin.x, by = double(b.y) - origin.y, bz = double(b.z) - origin.z;
        const double cx = double(c.x) - origin.x, cy = double(c.y) - origin.y, cz = double(c.z) - origin.z;
        x += by * cz - bz * cy;
        y += bz * cx - bx * cz;
        z += bx * cy - by * cx;
    }
    return {float(x), float(y), float(z)};
}

} // namespace

CornersOfPoints::CornersOfPoints(std::span<const std::uint32_t> pointOfCorner, std::size_t pointCount)
    : first(pointCount + 1), corners(pointOfCorner.size())
{
    for (const std::uint32_t point : pointOfCorner)
        ++first[point + 1];
    std::partial_sum(first.begin(), first.end(), first.begin());
    std::vector<std::uint32_t> next(first.begin(), first.end() - 1);
    for (std::uint32_t corner = 0; corner < pointOfCorner.size(); ++corner)
        corners[next[pointOfCorner[corner]]++] = corner;
}

std::vector<Vec3f> cornerNormals(std::span<const Vec3f> points, std::span<const std::uint32_t> pointOfCorner,
                                 std::span<const PolygonFace> faces, const CornersOfPoints& corners, float creaseAngle)
{
    std::vector<Vec3f> areas, directions;
    std::vector<std::uint32_t> faceOf(pointOfCorner.size());
    for (std::uint32_t i = 0; i < faces.size(); ++i) {
        areas.push_back(areaOf(points, pointOfCorner.subspan(faces[i].first, faces[i].count)));
        directions.push_back(normalized(areas.back()));
        std::fill_n(faceOf.begin() + faces[i].first, faces[i].count, i);
    }
    const float least = creaseAngle >= 3.14159f ? -2 : std::cos(std::max(creaseAngle, 0.0f)) - cosineTolerance;
    std::vector<Vec3f> normals(pointOfCorner.size());
    std::uint64_t comparisons = 0;
    for (std::size_t point = 0; point < points.size(); ++point) {
        const std::span<const std::uint32_t> here = corners.of(point);
        comparisons += std::uint64_t(here.size()) * here.size();
        for (const std::uint32_t corner : here) {
            const Vec3f& own = directions[faceOf[corner]];
            Vec3f sum;
            for (const std::uint32_t other : comparisons > maxComparisons ? std::span<const std::uint32_t>() : here)
                if (dot(own, directions[faceOf[other]]) >= least)
                    sum = sum + areas[faceOf[other]];
            const Vec3f normal = creaseAngle > 0 ? normalized(sum) : own;
            normals[corner] = dot(normal, normal) > 0 ? normal : own;
        }
    }
    return normals;
}

} // namespace osg
