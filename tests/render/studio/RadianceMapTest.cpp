#include "render/studio/RadianceMap.h"

#include <gtest/gtest.h>

#include <cmath>

namespace render::studio
{

namespace
{

/// Each value its own direction.
RadianceMap mapOfDirections(int side)
{
    RadianceMap map(side);
    for (int row = 0; row < side; ++row)
        for (int column = 0; column < side; ++column)
            map.setValue(column, row, RadianceMap::directionAt(float(column) + 0.5f, float(row) + 0.5f, side));
    map.closeBorders();
    return map;
}

/// All over the sphere, and where the square has its edges and corners.
std::vector<Eigen::Vector3f> directions()
{
    std::vector<Eigen::Vector3f> result = {{1, 0, 0},      {-1, 0, 0},        {0, 1, 0},       {0, -1, 0},
                                           {0, 0, 1},      {0, 0, -1},        {1, 0, -1},      {0, -1, -1},
                                           {1, 1e-4f, -1}, {1e-4f, 1, -0.5f}, {-1e-4f, 1, -2}, {1, 1, 0}};
    for (int i = 0; i < 200; ++i) {
        const float z = 1 - (float(i) + 0.5f) / 100, turn = 2.4f * float(i);
        const float across = std::sqrt(1 - z * z);
        result.emplace_back(across * std::cos(turn), across * std::sin(turn), z);
    }
    return result;
}

} // namespace

TEST(RadianceMap, GivesBackWhatWasSetAroundEachDirection)
{
    const RadianceMap map = mapOfDirections(64);
    for (const Eigen::Vector3f& direction : directions())
        EXPECT_LT((map.at(direction).normalized() - direction.normalized()).norm(), 0.02f) << direction.transpose();
}

TEST(RadianceMap, WeightsAddUpToTheirPartsOfTheSphere)
{
    // The upper eighth of the sphere with all coordinates positive has the light 1.
    constexpr int side = 64;
    double all = 0, eighth = 0, cap = 0;
    for (int i = 0; i < side * side; ++i) {
        const float x = float(i % side) + 0.5f, y = float(i / side) + 0.5f;
        const double weight = RadianceMap::weightAt(x, y, side);
        const Eigen::Vector3f direction = RadianceMap::directionAt(x, y, side);
        all += weight;
        eighth += direction.minCoeff() > 0 ? weight : 0;
        cap += direction.z() > 0.5f ? weight : 0; // a quarter of the sphere by Archimedes
    }
    EXPECT_NEAR(eighth / all, 0.125, 0.005);
    EXPECT_NEAR(cap / all, 0.25, 0.01);
}

TEST(RadianceMap, HalvesKeepDirections)
{
    const RadianceMap map = mapOfDirections(64).halved();
    EXPECT_EQ(map.side(), 32);
    for (const Eigen::Vector3f& direction : directions())
        EXPECT_LT((map.at(direction).normalized() - direction.normalized()).norm(), 0.04f) << direction.transpose();
}

} // namespace render::studio
