#pragma once

#include "files/Expected.h"
#include "files/references/ReferencePolicy.h"
#include "host/OSGSystem/Node.h"

#include <QString>

#include <cstdint>

/// Readers of mesh formats: one file in, one tree out.
///
/// A tree is in millimetres, right-handed, Z up; colours are display colours. Formats that fix another unit or axis are
/// brought to that by a transform; formats that fix none come in as they are, unless the options say otherwise. A read
/// has no state outside its arguments and its result, starts no thread and throws nothing.
namespace files
{

enum class UpAxis { Y, Z };

/// What a file may cost before it is refused. Counts are held against these limits before memory is taken for them.
struct ReadLimits {
    std::uint64_t maxFileBytes = (std::uint64_t(1) << 32) - 1; ///< with all files that it refers to
    std::uint64_t maxNodes = std::uint64_t(1) << 22;
    /// Of all geometries together. A shared array counts once; where vertices carry more than a position, each array
    /// counts.
    std::uint64_t maxVertices = std::uint64_t(1) << 28;
    std::uint64_t maxDepth = 10'000; ///< of the tree
    /// Bytes of memory for all that a read takes, what it gives back in between included. A small file gets less: as
    /// much as its bytes can mean (see `ReadTask::takeMemory`).
    std::uint64_t maxMemory = std::uint64_t(8) << 30;
};

struct ReadOptions {
    UpAxis upAxis = UpAxis::Z;       ///< of formats that do not fix it (OBJ, PLY, VRML)
    double millimetresPerUnit = 1.0; ///< of formats that do not fix it (OBJ, PLY, VRML)
    /// VRML files mean what their standard says: metres, Y up. Otherwise unit and axis are those above.
    bool vrmlInMetres = false;
    /// Which level of detail is read of nodes that have several (glTF); 0 is the finest, and one that a node does not
    /// have its coarsest.
    int level = 0;
    /// A scene file is mapped rather than read into memory: for one that nobody cuts short while its tree lives, which
    /// would end the process with SIGBUS.
    bool mapsFile = false;
    /// Which files it may name. Without a folder of the file that was asked for, that of the file that is read counts.
    references::Policy references;
    ReadLimits limits;
};

/// The root of what was read: a plain group without a parent and with the count 0, so that the caller takes the first
/// reference. It bears the name of the file without folder and extension; meshes and transforms hang below it. After a
/// failure nothing that was made for it is left alive. After a hundred warnings the rest is counted in one.
using ReadResult = files::Result<osg::NodePtr>;

} // namespace files
