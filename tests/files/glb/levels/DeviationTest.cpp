#include "files/glb/levels/Deviation.h"

#include "tests/files/glb/levels/LevelShapes.h"

#include <gtest/gtest.h>

#include <cmath>

namespace
{

using files::glb::levels::Deviation;
using files::glb::levels::Surface;
using files::glb::levels::Triangles;

constexpr double unlimited = std::numeric_limits<double>::infinity();

class DeviationTest : public testing::Test
{
protected:
    double deviation(const Surface& surface, const Triangles& triangles, double limit = unlimited) const
    {
        return Deviation(device, surface).of(triangles, limit);
    }

    std::function<void(double)> progress;
    geometry::rays::Watch watch{progress, nullptr};
    geometry::rays::RayDevice device{1, watch};
};

TEST_F(DeviationTest, FewerTrianglesOfAPlaneAreNowhereOff)
{
    const Surface surface = levelshapes::surfaceOf(levelshapes::plane(20, 10));
    EXPECT_LT(deviation(surface, files::glb::levels::reduced(surface, surface.triangles, 0, 1e-4)), 1e-6);
}

/// All vertices are on the ball, so that the deepest point of a triangle is as far from it as it is nearer to the
/// middle than the radius.
TEST_F(DeviationTest, ABallIsOffByTheDepthOfItsTriangles)
{
    const Surface surface = levelshapes::surfaceOf(levelshapes::ball(90, 10));
    for (const std::size_t most : {1500, 200}) {
        const Triangles fewer = files::glb::levels::reduced(surface, surface.triangles, most, 10);
        double depth = 0;
        for (std::size_t i = 0; i < fewer.size(); i += 3) {
            const auto corner = [&](std::size_t k) -> Eigen::Vector3d {
                return surface.positions[fewer[i + k]].cast<double>();
            };
            const geometry::rays::Corners corners = {corner(0), corner(1), corner(2)};
            depth = std::max(depth, 10 - geometry::rays::distanceTo(corners, {0, 0, 0}));
        }
        EXPECT_NEAR(deviation(surface, fewer), depth, depth * 0.04) << most;
    }
}

TEST_F(DeviationTest, AVertexThatIsLeftOutCounts)
{
    osg::Mesh mesh = levelshapes::plane(4, 4);
    std::vector<osg::Vec3f> positions(mesh.positions.begin(), mesh.positions.end());
    positions[12].z = 0.75f;
    mesh.positions = positions;
    const Surface surface = levelshapes::surfaceOf(mesh);
    const Triangles square = {0, 4, 24, 0, 24, 20};
    EXPECT_NEAR(deviation(surface, square), 0.75, 1e-6);
}

/// The vertices of the surface are all on the cover, whose middle is far from it.
TEST_F(DeviationTest, TrianglesWhereThereWereNoneCountInTheirMiddle)
{
    osg::Mesh mesh;
    mesh.positions = std::vector<osg::Vec3f>{{0, 0, 0}, {8, 0, 0}, {8, 8, 0}, {0, 8, 0}, {4, 4, -3}};
    mesh.triangles = Triangles{0, 1, 4, 1, 2, 4, 2, 3, 4};
    const Surface surface = levelshapes::surfaceOf(mesh);
    Triangles covered = surface.triangles;
    covered.insert(covered.end(), {0, 1, 2});
    // The farthest of the cover is somewhere on it; its corners are at the surface.
    const double measured = deviation(surface, covered);
    EXPECT_GT(measured, 2.2);
    EXPECT_LT(measured, 3);
}

TEST_F(DeviationTest, TheSameTrianglesAreNotOffAndNoneAreInfinitely)
{
    const Surface surface = levelshapes::surfaceOf(levelshapes::ball(8, 1));
    EXPECT_EQ(deviation(surface, surface.triangles), 0);
    EXPECT_EQ(deviation(surface, {}), unlimited);
}

TEST_F(DeviationTest, MeasuringEndsBeyondTheLimit)
{
    const Surface surface = levelshapes::surfaceOf(levelshapes::ball(40, 10));
    const Triangles fewer = files::glb::levels::reduced(surface, surface.triangles, 100, 10);
    const double whole = deviation(surface, fewer);
    const double ended = deviation(surface, fewer, whole / 100);
    EXPECT_GT(ended, whole / 100);
    EXPECT_LT(ended, whole);
}

} // namespace
