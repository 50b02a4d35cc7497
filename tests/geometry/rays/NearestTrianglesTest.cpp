#include "geometry/rays/NearestTriangles.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace
{

using geometry::rays::Corners;
using geometry::rays::distanceTo;
using geometry::rays::NearestTriangles;

class NearestTrianglesTest : public testing::Test
{
protected:
    std::function<void(double)> progress;
    geometry::rays::Watch watch{progress, nullptr};
    geometry::rays::RayDevice device{1, watch};
};

const Corners corners = {Eigen::Vector3d(0, 0, 0), Eigen::Vector3d(4, 0, 0), Eigen::Vector3d(0, 3, 0)};

TEST_F(NearestTrianglesTest, DistanceIsThatOfThePlaneAnEdgeOrACorner)
{
    EXPECT_DOUBLE_EQ(distanceTo(corners, {1, 1, -7}), 7);
    EXPECT_DOUBLE_EQ(distanceTo(corners, {2, -3, 4}), 5);
    EXPECT_DOUBLE_EQ(distanceTo(corners, {7, -4, 0}), 5);
    // From the middle of the slanted edge along its normal (3, 4) / 5.
    EXPECT_DOUBLE_EQ(distanceTo(corners, {2 + 6, 1.5 + 8, 0}), 10);
    EXPECT_DOUBLE_EQ(distanceTo(corners, {1, 1, 0}), 0);
}

TEST_F(NearestTrianglesTest, TrianglesWithoutAreaAreLinesAndPoints)
{
    EXPECT_DOUBLE_EQ(
        distanceTo({Eigen::Vector3d(0, 0, 0), Eigen::Vector3d(8, 0, 0), Eigen::Vector3d(2, 0, 0)}, {7, 3, 4}), 5);
    const Eigen::Vector3d point(1, 2, 3);
    EXPECT_DOUBLE_EQ(distanceTo({point, point, point}, {1, 5, 7}), 5);
}

TEST_F(NearestTrianglesTest, TheNearestOfManyIsFoundAlsoFarFromTheOrigin)
{
    std::mt19937 numbers(7);
    std::uniform_real_distribution<float> place(0, 100), step(-3, 3);
    for (const float away : {0.0f, 50000.0f}) {
        std::vector<Eigen::Vector3f> positions;
        std::vector<std::uint32_t> triangles;
        for (std::uint32_t i = 0; i < 900; i += 3) {
            const Eigen::Vector3f first(place(numbers) + away, place(numbers), place(numbers));
            positions.push_back(first);
            for (int corner = 0; corner < 2; ++corner)
                positions.emplace_back(first + Eigen::Vector3f(step(numbers), step(numbers), step(numbers)));
            triangles.insert(triangles.end(), {i, i + 1, i + 2});
        }
        const NearestTriangles nearest(device, positions, triangles);
        for (int i = 0; i < 200; ++i) {
            const Eigen::Vector3d point(place(numbers) + away, place(numbers), place(numbers));
            double wanted = 1e9;
            for (std::size_t triangle = 0; triangle < 300; ++triangle)
                wanted = std::min(wanted, distanceTo(nearest.corners(triangle), point));
            EXPECT_DOUBLE_EQ(nearest.distance(point), wanted);
        }
    }
    EXPECT_FALSE(device.hasFailed());
}

TEST_F(NearestTrianglesTest, NothingIsNearWhereThereIsNothing)
{
    EXPECT_TRUE(std::isinf(NearestTriangles(device, {}, {}).distance({1, 2, 3})));
}

} // namespace
