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

} // namespace files::glb
