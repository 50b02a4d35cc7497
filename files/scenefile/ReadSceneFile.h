#pragma once

#include "files/Expected.h"
#include "host/OSGSystem/Node.h"

#include <QString>

#include <cstdint>

namespace osg::scenefile
{

/// What a file may cost before it is refused. Every count is held against the size of the file first.
struct SceneFileReadOptions {
    std::uint64_t maxFileBytes = std::uint64_t(1) << 40; ///< the size of the file, in bytes
    /// Nodes, cores, materials, attachments and file references together.
    std::uint64_t maxContainers = std::uint64_t(1) << 26;
    /// All texts (names, tags, paths), each counted as often as it is used, with 32 bytes for itself.
    std::uint64_t maxTextBytes = std::uint64_t(1) << 30;
    /// Reads the whole file to verify the checksums of its chunks. Header and table are verified always.
    bool verifyChecksums = false;
    /// Reads the file into memory at once rather than mapping it: for a file that somebody may cut short while its
    /// scene lives, which would end the process with SIGBUS.
    bool copyIntoMemory = false;
};

/// Reads the tree in `path`. Either the whole tree comes back, or an error and nothing is left alive.
///
/// Arrays of meshes and B-rep data stand on the memory map of the file, which lives as long as one of them does; no
/// vertex is copied. Whatever the file holds, a mesh that comes back keeps the promises of `osg::Mesh`: its indices are
/// checked here, its coordinates may be any bit pattern. Do not rewrite the file in place while its scene lives;
/// replacing it by a rename, as `writeSceneFile` does, and removing it are safe.
///
/// @return the root, which has no parent and the count 0, so that the caller takes the first reference; or the error,
///     whose place is a byte. The warnings name classes whose objects were taken as another or left out.
files::Result<NodePtr> readSceneFile(const QString& path, const SceneFileReadOptions& options = {});

} // namespace osg::scenefile
