#pragma once

#include "files/ReadTask.h"

namespace files::gltf
{

/// glTF 2.0, as text with its files or as one binary file.
///
/// The root has one child, which turns metres and Y up into millimetres and Z up, or the unit and axis that a file of
/// `files/glb` tells; below it stand the nodes of the default scene with their transforms, and below these the
/// geometries of their meshes, one for each primitive. A leaf with one primitive and without a transform is the
/// geometry itself. Primitives of a mesh that several nodes use are shared cores. Strips, fans and loops become single
/// triangles and lines. Linear colours become display colours.
/// Extras become attributes (GltfExtras).
///
/// Materials keep their physically based surface with its textures (GltfSurfaces).
///
/// Left out: lights, skins, morph targets, animations, other scenes, and other extensions. What a file requires of
/// these is an error.
osg::NodePtr readGltf(ReadTask& task);

} // namespace files::gltf
