#include "scene/Polygons.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <random>
#include <utility>
#include <vector>

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

/// How many triangles of a polygon in the plane z = 0 hold a point that lies on no side of any.
int coverOf(const std::vector<Vec3f>& positions, const Vec2f& point)
{
    const std::vector<std::uint32_t> triangles = trianglesOf(positions);
    const auto isLeftOf = [&](std::uint32_t from, std::uint32_t to) {
        const Vec3f& a = positions[from];
        const Vec3f& b = positions[to];
        return double(b.x - a.x) * (point.y - a.y) - double(point.x - a.x) * (b.y - a.y) > 0;
    };
    int cover = 0;
    for (std::size_t i = 0; i < triangles.size(); i += 3)
        cover += isLeftOf(triangles[i], triangles[i + 1]) && isLeftOf(triangles[i + 1], triangles[i + 2]) &&
                 isLeftOf(triangles[i + 2], triangles[i]);
    return cover;
}

/// Hangs a hole on corner `at` of an outline by a line from there to the hole's first corner and back.
std::vector<Vec3f> withHole(std::vector<Vec3f> outline, std::size_t at, const std::vector<Vec3f>& hole)
{
    std::vector<Vec3f> line(hole);
    line.push_back(hole.front());
    line.push_back(outline[at]);
    outline.insert(outline.begin() + static_cast<std::ptrdiff_t>(at) + 1, line.begin(), line.end());
    return outline;
}

const std::vector<Vec3f> Square{{0, 0, 0}, {10, 0, 0}, {10, 10, 0}, {0, 10, 0}};

TEST(Polygons, AHoleStaysOpenWhereverItHangs)
{
    const std::vector<Vec3f> hole{{4, 4, 0}, {4, 6, 0}, {6, 6, 0}, {6, 4, 0}};
    // Each corner of the outline with the corner of the hole that it sees.
    const std::vector<std::pair<std::size_t, std::ptrdiff_t>> lines{{0, 0}, {1, 3}, {2, 2}, {3, 1}};
    for (const auto& [at, first] : lines) {
        std::vector<Vec3f> turned(hole);
        std::rotate(turned.begin(), turned.begin() + first, turned.end());
        const std::vector<Vec3f> polygon = withHole(Square, at, turned);
        EXPECT_NEAR(areaOf(polygon, 2), 96, 1e-6) << at;
        EXPECT_EQ(coverOf(polygon, {5.1f, 4.7f}), 0) << at;
        for (const Vec2f point : {Vec2f{1.3f, 4.9f}, Vec2f{5.2f, 1.7f}, Vec2f{8.9f, 5.3f}, Vec2f{4.7f, 8.1f}})
            EXPECT_EQ(coverOf(polygon, point), 1) << at << ": " << point.x << ' ' << point.y;
    }
}

TEST(Polygons, TwoHolesStayOpen)
{
    std::vector<Vec3f> polygon = withHole(Square, 0, {{2, 2, 0}, {2, 4, 0}, {4, 4, 0}, {4, 2, 0}});
    EXPECT_NEAR(areaOf(polygon, 2), 96, 1e-6);
    // The outline's second corner stands behind the six that the first hole brought.
    polygon = withHole(polygon, 7, {{8, 6, 0}, {7, 5, 0}, {6, 6, 0}, {7, 8, 0}});
    EXPECT_NEAR(areaOf(polygon, 2), 93, 1e-6);
    EXPECT_EQ(coverOf(polygon, {3.1f, 2.7f}), 0);
    EXPECT_EQ(coverOf(polygon, {7.1f, 6.3f}), 0);
    EXPECT_EQ(coverOf(polygon, {5.3f, 4.9f}), 1);
}

TEST(Polygons, TwoHolesThatHangOnOneCornerStayOpen)
{
    std::vector<Vec3f> polygon = withHole(Square, 0, {{4, 1, 0}, {4, 3, 0}, {6, 3, 0}, {6, 1, 0}});
    polygon = withHole(polygon, 0, {{1, 4, 0}, {1, 6, 0}, {3, 6, 0}, {3, 4, 0}});
    EXPECT_NEAR(areaOf(polygon, 2), 92, 1e-6);
    EXPECT_EQ(coverOf(polygon, {2.1f, 4.7f}), 0);
    EXPECT_EQ(coverOf(polygon, {5.1f, 2.3f}), 0);
}

TEST(Polygons, ADiamondInASquareStaysOpen)
{
    const std::vector<Vec3f> polygon = withHole(Square, 0, {{3, 5, 0}, {5, 7, 0}, {7, 5, 0}, {5, 3, 0}});
    EXPECT_NEAR(areaOf(polygon, 2), 92, 1e-6);
    EXPECT_EQ(coverOf(polygon, {5.1f, 4.7f}), 0);
}

TEST(Polygons, AWasherOfSixtyFourCornersStaysOpen)
{
    const double pi = std::acos(-1.0);
    std::vector<Vec3f> outline;
    std::vector<Vec3f> hole;
    for (int i = 0; i < 64; ++i) {
        const double angle = i * pi / 32;
        outline.push_back({float(5 * std::cos(angle)), float(5 * std::sin(angle)), 0});
        hole.push_back({float(2 * std::cos(angle)), float(-2 * std::sin(angle)), 0});
    }
    const std::vector<Vec3f> polygon = withHole(outline, 0, hole);
    EXPECT_NEAR(areaOf(polygon, 2), 32 * std::sin(pi / 32) * (25 - 4), 1e-3);
    EXPECT_EQ(coverOf(polygon, {0.3f, -1.1f}), 0);
    EXPECT_EQ(coverOf(polygon, {-3.3f, 0.7f}), 1);
}

double twiceArea(const Vec3f& a, const Vec3f& b, const Vec3f& c)
{
    return double(b.x - a.x) * (c.y - a.y) - double(c.x - a.x) * (b.y - a.y);
}

/// Whether two lines have a point in common that is no end of both.
bool meet(const Vec3f& a, const Vec3f& b, const Vec3f& c, const Vec3f& d)
{
    const auto isSame = [](const Vec3f& p, const Vec3f& q) { return p.x == q.x && p.y == q.y; };
    const auto isOn = [&](const Vec3f& p, const Vec3f& from, const Vec3f& to) {
        return twiceArea(from, to, p) == 0 && (p.x - from.x) * (p.x - to.x) <= 0 && (p.y - from.y) * (p.y - to.y) <= 0;
    };
    if (twiceArea(a, b, c) * twiceArea(a, b, d) < 0 && twiceArea(c, d, a) * twiceArea(c, d, b) < 0)
        return true;
    for (const Vec3f& end : {c, d})
        if (isOn(end, a, b) && !isSame(end, a) && !isSame(end, b))
            return true;
    for (const Vec3f& end : {a, b})
        if (isOn(end, c, d) && !isSame(end, c) && !isSame(end, d))
            return true;
    return false;
}

/// Whether a line from a corner of a polygon leaves it into its inside.
bool leavesInside(const std::vector<Vec3f>& polygon, std::size_t at, const Vec3f& to)
{
    const Vec3f& before = polygon[(at + polygon.size() - 1) % polygon.size()];
    const Vec3f& behind = polygon[(at + 1) % polygon.size()];
    const bool isLeftOfBoth = twiceArea(before, polygon[at], to) > 0 && twiceArea(polygon[at], behind, to) > 0;
    const bool isLeftOfOne = twiceArea(before, polygon[at], to) > 0 || twiceArea(polygon[at], behind, to) > 0;
    return twiceArea(before, polygon[at], behind) > 0 ? isLeftOfBoth : isLeftOfOne;
}

bool isFree(const std::vector<Vec3f>& sides, const Vec3f& from, const Vec3f& to)
{
    for (std::size_t i = 0; i < sides.size(); ++i)
        if (meet(from, to, sides[i], sides[(i + 1) % sides.size()]))
            return false;
    return true;
}

/// Hangs holes into a square of 40, in cells that `random` picks, on corners that it picks of those that see each
/// other.
class RandomSheet
{
public:
    explicit RandomSheet(unsigned seed) : m_random(seed)
    {
        std::vector<int> cells{0, 1, 2, 3, 4, 5, 6, 7, 8};
        std::shuffle(cells.begin(), cells.end(), m_random);
        cells.resize(1 + m_random() % 5);
        for (const int cell : cells)
            m_holes.push_back(hole(Vec3f{float(6 + 12 * (cell % 3)), float(6 + 12 * (cell / 3)), 0}));
        for (const std::vector<Vec3f>& hole : m_holes)
            hang(hole);
    }

    const std::vector<Vec3f>& polygon() const { return m_polygon; }
    double area() const { return m_area; }

private:
    std::vector<Vec3f> hole(const Vec3f& m)
    {
        const auto size = float(1 + m_random() % 3);
        if (m_random() % 2) {
            m_area -= 2 * size * size;
            return {{m.x - size, m.y, 0}, {m.x, m.y + size, 0}, {m.x + size, m.y, 0}, {m.x, m.y - size, 0}};
        }
        m_area -= 4 * size * size;
        return {{m.x - size, m.y - size, 0},
                {m.x - size, m.y + size, 0},
                {m.x + size, m.y + size, 0},
                {m.x + size, m.y - size, 0}};
    }

    bool isFreeOfHoles(const Vec3f& from, const Vec3f& to) const
    {
        return std::ranges::all_of(m_holes, [&](const auto& hole) { return isFree(hole, from, to); });
    }

    void hang(const std::vector<Vec3f>& hole)
    {
        std::vector<std::vector<Vec3f>> choices;
        for (std::size_t at = 0; at < m_polygon.size(); ++at) {
            for (std::size_t first = 0; first < hole.size(); ++first) {
                const Vec3f& from = m_polygon[at];
                const Vec3f& to = hole[first];
                if (!leavesInside(m_polygon, at, to) || !isFree(m_polygon, from, to) || !isFreeOfHoles(from, to))
                    continue;
                std::vector<Vec3f> turned(hole);
                std::rotate(turned.begin(), turned.begin() + static_cast<std::ptrdiff_t>(first), turned.end());
                choices.push_back(withHole(m_polygon, at, turned));
            }
        }
        m_polygon = choices.at(m_random() % choices.size());
    }

    std::mt19937 m_random;
    std::vector<Vec3f> m_polygon{{-4, -4, 0}, {36, -4, 0}, {36, 36, 0}, {-4, 36, 0}};
    std::vector<std::vector<Vec3f>> m_holes;
    double m_area = 1600;
};

TEST(Polygons, AnyHolesThatHangAnywhereStayOpen)
{
    for (unsigned seed = 0; seed < 500; ++seed) {
        const RandomSheet sheet(seed);
        EXPECT_NEAR(areaOf(sheet.polygon(), 2), sheet.area(), 1e-3) << "seed " << seed;
    }
}

/// A ring of teeth, each of its corners at another distance.
std::vector<Vec3f> toothed(std::size_t count)
{
    std::vector<Vec3f> points;
    for (std::size_t i = 0; i < count; ++i) {
        const double angle = 2 * std::numbers::pi * double(i) / double(count);
        const double radius = 100 + (i % 2 == 0 ? 40 : 0) + 30 * std::sin(29 * angle);
        points.push_back({float(radius * std::cos(angle)), float(radius * std::sin(angle)), 0});
    }
    return points;
}

TEST(Polygons, AHundredThousandCornersAreCoveredOnce)
{
    const std::vector<Vec3f> points = toothed(100'000);
    const std::vector<std::uint32_t> triangles = trianglesOf(points);
    ASSERT_EQ(triangles.size(), 3 * (points.size() - 2));
    double outline = 0, covered = 0;
    const auto twice = [](const Vec3f& a, const Vec3f& b, const Vec3f& c) {
        return (double(b.x) - a.x) * (double(c.y) - a.y) - (double(b.y) - a.y) * (double(c.x) - a.x);
    };
    for (std::size_t i = 0; i < points.size(); ++i)
        outline += twice({0, 0, 0}, points[i], points[(i + 1) % points.size()]);
    std::size_t turned = 0;
    for (std::size_t i = 0; i < triangles.size(); i += 3) {
        const double area = twice(points[triangles[i]], points[triangles[i + 1]], points[triangles[i + 2]]);
        turned += area > 0 ? 0 : 1;
        covered += std::abs(area);
    }
    EXPECT_EQ(turned, 0u);
    EXPECT_NEAR(covered, outline, outline * 1e-9);
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
