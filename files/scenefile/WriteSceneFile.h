#pragma once

#include "files/Expected.h"
#include "files/OutputFile.h"
#include "host/OSGSystem/Node.h"

#include <QString>

#include <cstdint>

namespace osg::scenefile
{

/// What a written file may take.
struct SceneFileWriteOptions {
    /// The graph (everything but arrays of meshes and B-rep data) has to fit into this. The layout allows no more than
    /// the default.
    std::uint64_t maxGraphBytes = (std::uint64_t(1) << 31) - (1u << 20);
    /// No for files between processes, which nobody keeps.
    files::OutputFile::Lasting lasting = files::OutputFile::Lasting::Yes;
};

/// Writes `root` and what hangs below it to `path`. What stood there before is replaced at one stroke when the new file
/// is complete; on failure it stays as it was and nothing new is left in the folder. A link stays one, and the new file
/// has the permissions of the one that it replaces.
///
/// Cores, materials, meshes, arrays and file references that are shared in the tree are written once. The same tree
/// gives the same bytes. Objects of classes that the format does not know are written as their nearest known base, or
/// left out, with a warning for each class.
///
/// @return the size of the file in bytes, or the error
files::Result<std::uint64_t> writeSceneFile(const NodePtr& root, const QString& path,
                                            const SceneFileWriteOptions& options = {});

} // namespace osg::scenefile
