#pragma once

#include "host/OSGSystem/Pointers.h"

#include <Eigen/Core>

namespace geometry::rays
{

/// What the picture takes from a material: amounts of light, and the coverage.
struct Look {
    Eigen::Vector3f diffuse = {0.6f, 0.6f, 0.6f};
    Eigen::Vector3f emission = {0, 0, 0};
    float alpha = 1; ///< 1 is opaque
};

/// The look of `material`, or of what a switch material shows; a light grey when it is null or of a class without a
/// colour.
Look lookOf(const osg::MaterialPtr& material);

} // namespace geometry::rays
