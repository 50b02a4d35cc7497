#pragma once

#include "files/vrml/VrmlNodes.h"
#include "files/vrml/VrmlSource.h"
#include "scene/Mesh.h"

namespace files::vrml
{

/// The mesh of a box, a cone, a cylinder or a sphere around the origin; the axis of round ones is Y. They are round by
/// 32 segments. Empty for other nodes, and, with a warning, for a size that is not above 0.
osg::Mesh primitiveMesh(const Node& node, bool isTextured, const Source& source);

} // namespace files::vrml
