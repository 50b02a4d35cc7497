#pragma once

#include "scene/ColorSpace.h"

#include <algorithm>
#include <cmath>

namespace files::glb
{

/// `number` with six digits behind the point. What is turned into another unit for the scene and back for the file
/// would be another number each time, by its last bit; so it is the same.
inline float sixDigits(double number)
{
    return static_cast<float>(std::round(number * 1e6) / 1e6);
}

/// `value` between 0 and 1; 0 for what is no number.
inline float share(float value)
{
    return std::isfinite(value) ? std::clamp(value, 0.0f, 1.0f) : 0.0f;
}

/// The amount of light of a display colour.
inline float linearShare(float display)
{
    return sixDigits(share(osg::linearFromDisplay(display)));
}

} // namespace files::glb
