#pragma once

#include "files/vrml/VrmlNodes.h"
#include "host/OSGSystem/Math.h"

namespace files::vrml
{

/// The rotation of an axis and an angle in radians; none for an axis without direction or less than four numbers.
osg::Quaternion rotationOf(std::span<const float> numbers);

/// The matrix of a Transform node: scaling along its own axes and rotation, both about its centre, then translation.
osg::Matrix matrixOf(const Node& transform);

} // namespace files::vrml
