#include "render/studio/Environment.h"

#include <Eigen/Geometry>
#include <gtest/gtest.h>

#include <cmath>

namespace render::studio
{

namespace
{

constexpr int detail = 256;

Environment environment(const RadianceFunction& light, int threads = 1)
{
    return Environment(light, detail, threads, nullptr);
}

Eigen::Vector3f grey(float light)
{
    return Eigen::Vector3f::Constant(light);
}

/// A soft lamp above the front.
Eigen::Vector3f lamp(const Eigen::Vector3f& direction)
{
    return grey(0.1f + 4 * std::pow(std::max(direction.dot(Eigen::Vector3f(0, -0.6f, 0.8f)), 0.0f), 30.0f));
}

/// The mean around the z axis turned to `axis` with the weights of the GGX lobe of a surface that is looked at
/// straight, by fine steps.
float lobeMean(const RadianceFunction& light, const Eigen::Vector3f& axis, float roughness)
{
    const double alpha2 = std::pow(double(roughness), 4);
    const Eigen::Quaternionf turn = Eigen::Quaternionf::FromTwoVectors(Eigen::Vector3f::UnitZ(), axis);
    double sum = 0, weights = 0;
    for (int i = 0; i < 400; ++i) {
        const double slope = (i + 0.5) / 400 * EIGEN_PI / 2; // of the light against the axis
        const double half = std::cos(slope / 2), bend = half * half * (alpha2 - 1) + 1;
        const double weight = alpha2 / (bend * bend) * std::cos(slope) * std::sin(slope);
        for (int j = 0; j < 64; ++j) {
            const double around = j * EIGEN_PI / 32;
            const Eigen::Vector3f local(float(std::sin(slope) * std::cos(around)),
                                        float(std::sin(slope) * std::sin(around)), float(std::cos(slope)));
            sum += weight * light(turn * local).x();
            weights += weight;
        }
    }
    return float(sum / weights);
}

} // namespace

TEST(Environment, EvenLightIsTheSameForAll)
{
    const Environment even = environment([](const Eigen::Vector3f&) { return Eigen::Vector3f(0.5f, 1, 2); });
    for (const Eigen::Vector3f& direction : {Eigen::Vector3f(1, 2, -3), Eigen::Vector3f(0, 0, 1)}) {
        EXPECT_LT((even.gathered(direction) - Eigen::Vector3f(0.5f, 1, 2)).norm(), 1e-3f);
        for (const float roughness : {0.0f, 0.3f, 1.0f})
            EXPECT_LT((even.reflected(direction, roughness) - Eigen::Vector3f(0.5f, 1, 2)).norm(), 1e-3f);
    }
}

TEST(Environment, MirrorsSeeTheLightItself)
{
    const Environment around = environment([](const Eigen::Vector3f& d) { return Eigen::Vector3f(d.array() + 1); });
    for (const Eigen::Vector3f& direction :
         {Eigen::Vector3f(0.6f, 0, 0.8f), Eigen::Vector3f(0, -0.8f, -0.6f), Eigen::Vector3f(-1, 0, 0)})
        EXPECT_LT((around.reflected(direction, 0) - direction - grey(1)).norm(), 0.01f);
}

TEST(Environment, RoughSurfacesSeeTheMeanOfTheirLobe)
{
    const Environment around = environment(lamp);
    for (const float roughness : {0.125f, 0.25f, 0.5f, 0.75f, 1.0f})
        for (const Eigen::Vector3f& axis : {Eigen::Vector3f(0, -0.6f, 0.8f), Eigen::Vector3f(0, -1, 0),
                                            Eigen::Vector3f(0.6f, 0, 0.8f), Eigen::Vector3f(0, 0.6f, -0.8f)}) {
            const float exact = lobeMean(lamp, axis, roughness);
            EXPECT_NEAR(around.reflected(axis, roughness).x(), exact, 0.02f + 0.03f * exact)
                << roughness << " " << axis.transpose();
        }
}

TEST(Environment, DullSurfacesGatherByTheCosine)
{
    // Light of the upper half alone: half of it upright, all of it upwards.
    const Environment above = environment([](const Eigen::Vector3f& d) { return grey(d.z() > 0 ? 1.0f : 0.0f); });
    EXPECT_NEAR(above.gathered({0, 0, 1}).x(), 1, 0.02f);
    EXPECT_NEAR(above.gathered({1, 0, 0}).x(), 0.5f, 0.02f);
    EXPECT_NEAR(above.gathered({0, 0, -1}).x(), 0, 0.02f);
    // Light of z + 1: its mean by the cosine is 1 + 2/3 of the height of the normal.
    const Environment slope = environment([](const Eigen::Vector3f& d) { return grey(d.z() + 1); });
    EXPECT_NEAR(slope.gathered({0, 0, 1}).x(), 1 + 2 / 3.0f, 0.01f);
    EXPECT_NEAR(slope.gathered({0.8f, 0, 0.6f}).x(), 1 + 0.4f, 0.01f);
}

TEST(Environment, ThreadsMakeTheSame)
{
    const Environment one = environment(lamp), four = environment(lamp, 4);
    for (const Eigen::Vector3f& direction : {Eigen::Vector3f(0.1f, -0.5f, 0.7f), Eigen::Vector3f(0.3f, 0.2f, -1)}) {
        EXPECT_EQ(one.gathered(direction), four.gathered(direction));
        for (const float roughness : {0.0f, 0.2f, 0.6f})
            EXPECT_EQ(one.reflected(direction, roughness), four.reflected(direction, roughness));
    }
}

} // namespace render::studio
