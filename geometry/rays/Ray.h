#pragma once

#include <Eigen/Core>

namespace geometry::rays
{

struct Ray {
    Eigen::Vector3f origin;
    Eigen::Vector3f direction; ///< of length 1
};

} // namespace geometry::rays
