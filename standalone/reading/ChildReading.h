#pragma once

#include "files/SceneReaders.h"
#include "standalone/reading/ReaderProcess.h"

namespace zn::reading
{

/// Reads the file of meshes of `task` where the setting files.reading of `session` says: by `program` (see
/// installedReader) in a child process, or by `inProcess`. The tree, the warnings and the error are the same. Without a
/// program `inProcess` reads.
///
/// While a child works the event loop runs (see `ReaderProcess`). A reader that did not come to an end of its own is
/// `ErrorCode::ReaderFailed` with the reason.
osg::NodePtr readMesh(Session& session, files::ReadTask& task, const files::ReadFunction& inProcess,
                      const QString& program = installedReader());

} // namespace zn::reading
