#pragma once

#include "scene/ColorSpace.h"

#include <Eigen/Core>

#include <algorithm>

namespace geometry::rays
{

/// A display colour as an amount of light in each channel; channels out of 0 to 1 are clamped.
inline Eigen::Vector3f toLight(const osg::Color3f& display)
{
    const osg::Color3f light = osg::linearFromDisplay(display);
    return {std::min(light.red, 1.0f), std::min(light.green, 1.0f), std::min(light.blue, 1.0f)};
}

/// How bright light of this colour is.
inline float luminance(const Eigen::Vector3f& light)
{
    return light.dot(Eigen::Vector3f(0.2126f, 0.7152f, 0.0722f));
}

} // namespace geometry::rays
