#pragma once

#include "files/vrml/VrmlNodes.h"
#include "files/vrml/VrmlSource.h"
#include "scene/Mesh.h"

namespace files::vrml
{

/// The mesh of a node that is a geometry; an empty one for other nodes and where nothing could be made, with a warning.
/// @param isTextured whether a picture is laid upon it: then it has the texture coordinates of its kind where the file
///        gives none, except for an Extrusion
osg::Mesh meshOf(const Node& geometry, bool isTextured, const Source& source);

/// Vectors of the numbers of a node's field.
std::vector<osg::Vec3f> vectorsOf(std::span<const float> numbers);
osg::Vec3f vectorOf(std::span<const float> numbers, const osg::Vec3f& otherwise);

} // namespace files::vrml
