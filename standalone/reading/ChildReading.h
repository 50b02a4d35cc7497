#pragma once

#include "files/SceneReaders.h"

#include <QString>

namespace zn
{
class Session;
} // namespace zn

/// Files of meshes come from anywhere. They are read by a `ptxconvert` of their own, so that a read can be stopped, has
/// limits of time and memory, and a file that crashes a reader costs that file and not the host.
namespace zn::reading
{

/// Path of the `ptxconvert` of this installation; empty where there is none.
QString installedReader();

/// Reads the file of `task` where the setting files.reading of `session` says: by `program` (see installedReader) in a
/// child process, or by `inProcess`. The tree, the warnings and the error are the same. Without a program `inProcess`
/// reads, which the log tells once in a session.
///
/// While a child works the event loop runs: windows are drawn, and what stands there may call `setCancelled`. What it
/// leaves are no files and no process, however it ends. A reader that did not come to an end of its own is
/// `ErrorCode::ReaderFailed` with the reason.
osg::NodePtr readMesh(Session& session, files::ReadTask& task, const files::ReadFunction& inProcess,
                      const QString& program = installedReader());

/// Ends the read of `session` that a child does now and refuses further ones (`ErrorCode::Cancelled`) until it is
/// called with false. Reads in this process cannot be ended.
void setCancelled(Session& session, bool isCancelled);

} // namespace zn::reading
