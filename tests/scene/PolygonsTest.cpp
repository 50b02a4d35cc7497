#include "scene/Polygons.h"

#include <gtest/gtest.h>

#include <cmath>

namespace
{

using osg::Vec2f;
using osg::Vec3f;

/// The triangles of a polygon that is all of `positions`.
std::vector<std::uint32_t> trianglesOf(const std::vector<Vec3f>& positions)
{
    std::vector<std::uint32_t> corners(positions.size());
    for (std::uint32_t i = 0; i < corners.size(); ++i)
        corners[i] = i;
    std::vector<std::uint32_t> triangles;
    osg::appendPolygon(positions, corners, triangles);
    return triangles;
}

/// The area of the triangles as seen against `axis` (0, 1, 2 for x, y, z); each must run to the left.
double areaOf(const std::vector<Vec3f>& positions, int axis)
{
    const auto flat = [axis](const Vec3f& p) {
        return axis == 0 ? Vec2f{p.y, p.z} : axis == 1 ? Vec2f{p.z, p.x} : Vec2f{p.x, p.y};
    };
    const std::vector<std::uint32_t> triangles = trianglesOf(positions);
    double area = 0;
    for (std::size_t i = 0; i < triangles.size(); i += 3) {
        const Vec2f a = flat(positions[triangles[i]]);
        const Vec2f b = flat(positions[triangles[i + 1]]);
        const Vec2f c = flat(positions[triangles[i + 2]]);
        const double twice = double(b.x - a.x) * (c.y - a.y) - double(c.x - a.x) * (b.y - a.y);
        EXPECT_GT(twice, 0);
        area += twice / 2;
    }
    return area;
}

TEST(Polygons, AQuadThatIsNotConvexIsCutWhereItIsInside)
{
    EXPECT_NEAR(areaOf({{0, 0, 5}, {4, 0, 5}, {1, 1, 5}, {0, 4, 5}}, 2), 4, 1e-6);
}

TEST(Polygons, ShapesAreCoveredOnceOnEveryPlane)
{
    EXPECT_NEAR(areaOf({{0, 0, 2}, {3, 0, 2}, {3, 1, 2}, {1, 1, 2}, {1, 3, 2}, {0, 3, 2}}, 2), 5, 1e-6);
    EXPECT_NEAR(areaOf({{2, 0, 0}, {2, 3, 0}, {2, 3, 1}, {2, 1, 1}, {2, 1, 3}, {2, 0, 3}}, 0), 5, 1e-6);
    EXPECT_NEAR(areaOf({{0, 2, 0}, {0, 2, 3}, {1, 2, 3}, {1, 2, 1}, {3, 2, 1}, {3, 2, 0}}, 1), 5, 1e-6);
}

TEST(Polygons, AStarIsCoveredOnce)
{
    std::vector<Vec3f> star;
    const double pi = std::acos(-1.0);
    for (int i = 0; i < 200; ++i) {
        const double radius = i % 2 ? 1 : 3;
        star.push_back({float(radius * std::cos(i * pi / 100)), float(radius * std::sin(i * pi / 100)), 1});
    }
    // 200 triangles between the centre and an edge: 1/2 * 1 * 3 * sin(pi / 100) each.
    EXPECT_NEAR(areaOf(star, 2), 200 * 1.5 * std::sin(pi / 100), 1e-4);
}

TEST(Polygons, AFlatOneAndOneThatCrossesItselfAreCutSomehow)
{
    EXPECT_EQ(trianglesOf({{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {3, 0, 0}}).size(), 6u);
    EXPECT_EQ(trianglesOf({{0, 0, 0}, {1, 1, 0}, {1, 0, 0}, {0, 1, 0}, {3, 3, 0}}).size(), 9u);
    EXPECT_EQ(trianglesOf({{0, 0, 0}, {1, 1, 0}, {std::nanf(""), 0, 0}, {0, 1, 0}}).size(), 6u);
}

TEST(Polygons, LessThanThreeCornersGiveNothing)
{
    EXPECT_EQ(trianglesOf({{0, 0, 0}, {1, 1, 0}}).size(), 0u);
}

} // namespace
