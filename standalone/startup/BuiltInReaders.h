#pragma once

#include "files/SceneReaders.h"

namespace zn
{

/// The formats that a session reads from its start: the mesh formats of this program, and scene files.
formats::SceneReaders builtInReaders();

} // namespace zn
