#include "render/studio/Reflectance.h"

#include "render/studio/Sampling.h"

#include <algorithm>
#include <cmath>

namespace render::studio
{

namespace
{

constexpr int samples = 1024;
/// The mean of Schlick's (1 - cosine)^5 over a half-sphere.
constexpr float meanGrazing = 1.0f / 21;

/// Smith's shadowing and masking, divided by 4 * facing * lit.
float visibility(float alpha, float facing, float lit)
{
    const float a2 = alpha * alpha;
    const float fromEye = lit * std::sqrt(facing * facing * (1 - a2) + a2);
    const float fromLight = facing * std::sqrt(lit * lit * (1 - a2) + a2);
    return 0.5f / (fromEye + fromLight);
}

DirectionalAlbedo integrate(const std::vector<Eigen::Vector3f>& halves, float alpha, float facing)
{
    const Eigen::Vector3f eye(std::sqrt(1 - facing * facing), 0, facing);
    DirectionalAlbedo sum;
    for (const Eigen::Vector3f& half : halves) {
        const float toHalf = eye.dot(half);
        const float lit = 2 * toHalf * half.z() - eye.z();
        if (lit <= 0 || toHalf <= 0)
            continue;
        const float part = 4 * visibility(alpha, facing, lit) * lit * toHalf / half.z() / float(samples);
        const float away = 1 - std::min(toHalf, 1.0f), away2 = away * away;
        const float grazing = away2 * away2 * away;
        sum.scale += (1 - grazing) * part;
        sum.bias += grazing * part;
    }
    return sum;
}

} // namespace

AlbedoTable::AlbedoTable()
{
    for (int row = 0; row < side; ++row) {
        const float roughness = float(row) / float(side - 1), alpha = roughness * roughness;
        std::vector<Eigen::Vector3f> halves;
        for (int i = 0; i < samples; ++i)
            halves.push_back(halfVector(i, samples, alpha));
        for (int column = 0; column < side; ++column)
            m_values.push_back(integrate(halves, alpha, std::max(float(column) / float(side - 1), 1e-3f)));
    }
}

DirectionalAlbedo AlbedoTable::at(float roughness, float facing) const
{
    const float x = std::clamp(facing, 0.0f, 1.0f) * float(side - 1);
    const float y = std::clamp(roughness, 0.0f, 1.0f) * float(side - 1);
    const int column = std::min(int(x), side - 2), row = std::min(int(y), side - 2);
    const float right = x - float(column), lower = y - float(row);
    const DirectionalAlbedo* first = &m_values[std::size_t(row) * side + std::size_t(column)];
    const DirectionalAlbedo* second = first + side;
    const auto between = [&](float DirectionalAlbedo::*part) {
        return (first[0].*part * (1 - right) + first[1].*part * right) * (1 - lower) +
               (second[0].*part * (1 - right) + second[1].*part * right) * lower;
    };
    return {between(&DirectionalAlbedo::scale), between(&DirectionalAlbedo::bias)};
}

const AlbedoTable& albedoTable()
{
    static const AlbedoTable table;
    return table;
}

Scattering scatteringOf(const DirectionalAlbedo& albedo, const Eigen::Vector3f& f0, float f90)
{
    const Eigen::Array3f single = f0.array() * albedo.scale + f90 * albedo.bias;
    const Eigen::Array3f mean = f0.array() + (f90 - f0.array()).max(0.0f) * meanGrazing;
    const float lost = std::max(1 - (albedo.scale + albedo.bias), 0.0f);
    const Eigen::Array3f multiple = single * mean / (1 - lost * mean).max(1e-4f) * lost;
    return {single, multiple};
}

} // namespace render::studio
