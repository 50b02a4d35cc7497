#pragma once

#include "scene/MeshArrays.h"

namespace files::obj
{

/// The mesh of `arrays` with vertices that are equal in all they carry, bit by bit, made one. Vertices keep the order
/// of their first appearance.
osg::Mesh weldedMesh(osg::MeshArrays arrays);

} // namespace files::obj
