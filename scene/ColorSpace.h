#pragma once

#include "host/OSGSystem/Math.h"

#include <cmath>

/// The one place where display colours and amounts of light are turned into each other (IEC 61966-2-1, sRGB). Materials
/// and vertices hold display colours; light is added up, and glTF is written, in linear ones. Values are not clamped;
/// negative ones and what is no number count as 0.
namespace osg
{

inline float linearFromDisplay(float display)
{
    if (!(display > 0))
        return 0;
    return display <= 0.04045f ? display / 12.92f : std::pow((display + 0.055f) / 1.055f, 2.4f);
}

inline float displayFromLinear(float linear)
{
    if (!(linear > 0))
        return 0;
    return linear <= 0.0031308f ? linear * 12.92f : 1.055f * std::pow(linear, 1.0f / 2.4f) - 0.055f;
}

inline Color3f linearFromDisplay(const Color3f& color)
{
    return {linearFromDisplay(color.red), linearFromDisplay(color.green), linearFromDisplay(color.blue)};
}

inline Color3f displayFromLinear(const Color3f& color)
{
    return {displayFromLinear(color.red), displayFromLinear(color.green), displayFromLinear(color.blue)};
}

} // namespace osg
