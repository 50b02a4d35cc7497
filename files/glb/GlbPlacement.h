#pragma once

#include "files/glb/GlbJson.h"
#include "host/OSGSystem/Math.h"

#include <optional>

namespace files::glb
{

/// How glTF tells a transform: the members of a node, empty for the identity, and where the transform shears, the
/// members of a second node within the first. The first is a matrix, exactly as given, wherever glTF allows it: where
/// it is rotation and scale up to a small deviation.
struct GlbPlacement {
    Json outer = Json::object();
    Json inner = Json::object();
};

/// None when `matrix` has numbers that are not finite. Its last row counts as 0 0 0 1.
std::optional<GlbPlacement> placementOf(const osg::Matrix& given);

/// What draws nothing to be seen at the place of a node with the members `outer`: a millionth of the size, without
/// rotation. Programs that invert transforms end on a size of 0.
Json shrunk(const Json& outer);

/// The third root of how a matrix changes volumes; 1 for one that leaves no space.
double scaleOf(const osg::Matrix& matrix);

/// A transform of which the scale is taken into the vertices below it.
struct Unscaled {
    osg::Matrix matrix; ///< what stays of it
    double below = 1;   ///< what vertices and translations below it are to be multiplied with
};
/// `above` is what the translation of `matrix` is to be multiplied with. The scale is that of the first axis, with six
/// digits, so that what differs by rounding alone is one scale.
Unscaled unscaled(const osg::Matrix& matrix, double above);

} // namespace files::glb
