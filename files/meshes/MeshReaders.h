#pragma once

#include "files/SceneReaders.h"

namespace files::meshes
{

/// The mesh formats of this program: OBJ, glTF, PLY and VRML.
SceneReaders meshReaders();

} // namespace files::meshes
