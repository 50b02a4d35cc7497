#include "files/vrml/CornerNormals.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace files::vrml
{

namespace
{

/// Comparisons of faces at one point, together. Beyond that, faces keep their own normals.
constexpr std::uint64_t maxComparisons = 400'000'000;
/// Faces that differ by rounding alone are one plane.
constexpr float cosineTolerance = 1e-5f;

osg::Vec3f operator+(const osg::Vec3f& a, const osg::Vec3f& b)
{
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}

float dot(const osg::Vec3f& a, const osg::Vec3f& b)
{
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

osg::Vec3f normalized(const osg::Vec3f& v)
{
    const float length = std::sqrt(dot(v, v));
    if (!(length > 0) || !std::isfinite(length))
        return {};
    return {v.x / length, v.y / length, v.z / length};
}

/// Twice the area along the normal (Newell's method), seen from the first corner so that far places cost no digits.
osg::Vec3f areaOf(std::span<const osg::Vec3f> points, std::span<const std::uint32_t> corners)
{
    const osg::Vec3f& origin = points[corners[0]];
    double x = 0, y = 0, z = 0;
    for (std::size_t i = 1; i + 1 < corners.size(); ++i) {
        const osg::Vec3f& b = points[corners[i]];
        const osg::Vec3f& c = points[corners[i + 1]];
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

std::vector<osg::Vec3f> cornerNormals(std::span<const osg::Vec3f> points, std::span<const std::uint32_t> pointOfCorner,
                                      std::span<const Face> faces, const CornersOfPoints& corners, float creaseAngle)
{
    std::vector<osg::Vec3f> areas, directions;
    std::vector<std::uint32_t> faceOf(pointOfCorner.size());
    for (std::uint32_t i = 0; i < faces.size(); ++i) {
        areas.push_back(areaOf(points, pointOfCorner.subspan(faces[i].first, faces[i].count)));
        directions.push_back(normalized(areas.back()));
        std::fill_n(faceOf.begin() + faces[i].first, faces[i].count, i);
    }
    const float least = creaseAngle >= 3.14159f ? -2 : std::cos(std::max(creaseAngle, 0.0f)) - cosineTolerance;
    std::vector<osg::Vec3f> normals(pointOfCorner.size());
    std::uint64_t comparisons = 0;
    for (std::size_t point = 0; point < points.size(); ++point) {
        const std::span<const std::uint32_t> here = corners.of(point);
        comparisons += std::uint64_t(here.size()) * here.size();
        for (const std::uint32_t corner : here) {
            const osg::Vec3f& own = directions[faceOf[corner]];
            osg::Vec3f sum;
            for (const std::uint32_t other : comparisons > maxComparisons ? std::span<const std::uint32_t>() : here)
                if (dot(own, directions[faceOf[other]]) >= least)
                    sum = sum + areas[faceOf[other]];
            const osg::Vec3f normal = creaseAngle > 0 ? normalized(sum) : own;
            normals[corner] = dot(normal, normal) > 0 ? normal : own;
        }
    }
    return normals;
}

} // namespace files::vrml
