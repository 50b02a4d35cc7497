#pragma once

#include <Eigen/Geometry>

#include <cmath>
#include <cstdint>

namespace render::studio
{

/// The digits of `index` mirrored at the binary point (van der Corput).
inline float mirroredDigits(std::uint32_t index)
{
    std::uint32_t bits = 0;
    for (int i = 0; i < 32; ++i)
        bits |= ((index >> i) & 1u) << (31 - i);
    return float(double(bits) / 4294967296.0);
}

/// The half vector `index` of `count` about the z axis, spread evenly with the weights of the GGX distribution.
inline Eigen::Vector3f halfVector(int index, int count, float alpha)
{
    const float part = (float(index) + 0.5f) / float(count);
    const float turn = 2 * float(EIGEN_PI) * mirroredDigits(std::uint32_t(index));
    const float cosine = std::sqrt((1 - part) / (1 + (alpha * alpha - 1) * part));
    const float sine = std::sqrt(std::max(1 - cosine * cosine, 0.0f));
    return {sine * std::cos(turn), sine * std::sin(turn), cosine};
}

/// Takes the z axis to `axis`, which has length 1.
inline Eigen::Matrix3f frameAround(const Eigen::Vector3f& axis)
{
    Eigen::Matrix3f frame;
    frame.col(0) = axis.unitOrthogonal();
    frame.col(1) = axis.cross(frame.col(0));
    frame.col(2) = axis;
    return frame;
}

} // namespace render::studio
