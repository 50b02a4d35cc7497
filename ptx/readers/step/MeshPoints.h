#pragma once

#include "host/OSGSystem/Math.h"
#include "ptx/readers/step/facets/Point.h"

#include <cmath>

namespace ptx::step
{

inline osg::Vec3f inMillimetres(const facets::Point& point, double unit)
{
    return {static_cast<float>(point[0] * unit), static_cast<float>(point[1] * unit),
            static_cast<float>(point[2] * unit)};
}

/// Whether `point` can be meant; what is written may be anything, infinite too.
inline bool isInRange(const osg::Vec3f& point)
{
    constexpr float Farthest = 1e9F; // a thousand kilometres
    return std::abs(point.x) < Farthest && std::abs(point.y) < Farthest && std::abs(point.z) < Farthest;
}

} // namespace ptx::step
