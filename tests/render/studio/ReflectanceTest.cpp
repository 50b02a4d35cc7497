#include "render/studio/Reflectance.h"

#include <gtest/gtest.h>

#include <cmath>

namespace render::studio
{

namespace
{

/// The same integral over directions of light by fine steps, without importance sampling.
DirectionalAlbedo byDirections(double roughness, double facing)
{
    const double a2 = std::pow(roughness, 4);
    const Eigen::Vector3d eye(std::sqrt(1 - facing * facing), 0, facing);
    constexpr int steps = 600;
    double scale = 0, bias = 0;
    for (int i = 0; i < steps; ++i)
        for (int j = 0; j < steps; ++j) {
            const double lit = (i + 0.5) / steps, around = (j + 0.5) / steps * 2 * EIGEN_PI;
            const double sine = std::sqrt(1 - lit * lit);
            const Eigen::Vector3d light(sine * std::cos(around), sine * std::sin(around), lit);
            const Eigen::Vector3d half = (light + eye).normalized();
            const double bend = half.z() * half.z() * (a2 - 1) + 1;
            const double d = a2 / (EIGEN_PI * bend * bend);
            const double v = 0.5 / (lit * std::sqrt(facing * facing * (1 - a2) + a2) +
                                    facing * std::sqrt(lit * lit * (1 - a2) + a2));
            const double part = d * v * lit * 2 * EIGEN_PI / (double(steps) * steps);
            const double grazing = std::pow(1 - eye.dot(half), 5);
            scale += part * (1 - grazing);
            bias += part * grazing;
        }
    return {float(scale), float(bias)};
}

} // namespace

TEST(Reflectance, TheTableHoldsTheIntegral)
{
    for (const float roughness : {0.3f, 0.5f, 0.8f, 1.0f})
        for (const float facing : {0.15f, 0.5f, 0.9f}) {
            const DirectionalAlbedo exact = byDirections(roughness, facing);
            const DirectionalAlbedo read = albedoTable().at(roughness, facing);
            EXPECT_NEAR(read.scale, exact.scale, 0.012f) << roughness << " " << facing;
            EXPECT_NEAR(read.bias, exact.bias, 0.012f) << roughness << " " << facing;
        }
}

TEST(Reflectance, AMirrorReflectsBySchlick)
{
    for (const float facing : {0.25f, 0.6f, 1.0f}) {
        const DirectionalAlbedo mirror = albedoTable().at(0, facing);
        const float grazing = std::pow(1 - facing, 5.0f);
        EXPECT_NEAR(mirror.bias, grazing, 0.01f);
        EXPECT_NEAR(mirror.scale, 1 - grazing, 0.01f);
    }
}

TEST(Reflectance, WhatReflectsAllLosesNothingBetweenFacets)
{
    for (const float roughness : {0.0f, 0.4f, 1.0f})
        for (const float facing : {0.05f, 0.5f, 1.0f}) {
            const Scattering white = scatteringOf(albedoTable().at(roughness, facing), {1, 1, 1}, 1);
            EXPECT_NEAR(white.single.x() + white.multiple.x(), 1, 2e-3f) << roughness << " " << facing;
        }
    const Scattering rough = scatteringOf(albedoTable().at(1, 0.5f), {1, 1, 1}, 1);
    EXPECT_GT(rough.multiple.x(), 0.1f);
}

TEST(Reflectance, MoreBouncesMakeColorsDeeper)
{
    const Scattering red = scatteringOf(albedoTable().at(1, 0.5f), {0.9f, 0.3f, 0.0f}, 1);
    EXPECT_GT(red.multiple.x() / red.multiple.y(), red.single.x() / red.single.y());
    EXPECT_LT(red.single.z() + red.multiple.z(), 0.2f);
}

} // namespace render::studio
