#pragma once

#include "files/SceneReaders.h"

namespace zn
{
class Session;
} // namespace zn

namespace zn::startup
{

/// The formats that a session reads from its start: the mesh formats of this program, and scene files. All are read in
/// this process.
files::SceneReaders builtInReaders();

/// The same for `session`, which must outlive them: meshes are read where its setting files.reading says.
files::SceneReaders sessionReaders(Session& session);

} // namespace zn::startup
