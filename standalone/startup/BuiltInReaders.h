#pragma once

#include "files/SceneReaders.h"

namespace zn::startup
{

/// The formats that a session reads from its start: the mesh formats of this program, and scene files.
files::SceneReaders builtInReaders();

} // namespace zn::startup
