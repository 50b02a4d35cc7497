#pragma once

#include "host/OSGSystem/Node.h"

#include <QString>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// The converted scene file (extension `osb`): one tree of nodes with everything that hangs on it.
///
/// Works without a session and without Qt Gui. Neither function throws; what goes wrong is told as a value. The layout
/// is in docs/scene-file-format.md.
namespace osg
{

/// Why a file was not read or written.
enum class SceneFileErrorCode {
    NotFound,           ///< the file is missing or cannot be opened
    NotRegular,         ///< a folder, a pipe or a device
    NotASceneFile,      ///< no scene file, or one that a transfer as text has changed
    UnsupportedVersion, ///< written by a newer program in a layout that this one does not know
    Truncated,          ///< shorter or longer than its header says
    DamagedHeader,      ///< the first 64 bytes
    DamagedTable,       ///< the table of chunks
    WrongChecksum,      ///< of a chunk, when checksums are verified
    DamagedGraph,       ///< the chunk with nodes, cores and materials
    DamagedMesh,        ///< an array outside its chunk, a wrong length, an index without a vertex
    LimitExceeded,      ///< a limit of the options, or of the layout
    OutOfMemory,        ///< memory ran out
    ReadFailed,         ///< the system could not map or read the file
    NothingToWrite,     ///< the root is null
    InvalidMesh,        ///< a mesh in memory that breaks the promises of `osg::Mesh`
    CannotCreate,       ///< the output folder is missing or not writable, or the target is no regular file
    WriteFailed,        ///< the disk is full, or a size limit of the process was met
};

/// The code as a word for logs, such as "DamagedMesh".
const char* sceneFileErrorName(SceneFileErrorCode code);

/// What went wrong, as a value.
struct SceneFileError {
    SceneFileErrorCode code;  ///< what kind of fault it is
    QString message;          ///< what is wrong, for people; without the file's name
    QString file;             ///< as given to the function that failed
    std::uint64_t offset = 0; ///< the place in the file, as near as it is known

    /// File, message and place in one line.
    QString toString() const;
};

/// Objects of one class that were not read or written as they are.
struct SceneFileWarning {
    std::string className;   ///< the name of the class, as its record tells it
    std::string usedInstead; ///< the nearest known base class; empty: the objects were left out
    std::uint32_t count = 0; ///< how many objects

    /// The warning in one sentence.
    QString message() const;
    /// Equal texts and counts.
    friend bool operator==(const SceneFileWarning&, const SceneFileWarning&) = default;
};

/// What a written file may take.
struct SceneFileWriteOptions {
    /// The graph (everything but arrays of meshes and B-rep data) has to fit into this. The layout allows no more than
    /// the default.
    std::uint64_t maxGraphBytes = (std::uint64_t(1) << 31) - (1u << 20);
};

/// What a write gave: the size of a complete file, or the reason why there is none.
struct SceneFileWriteResult {
    std::optional<SceneFileError> error;    ///< none after a success
    std::vector<SceneFileWarning> warnings; ///< what is not in the file as it is in the tree
    std::uint64_t bytes = 0;                ///< the size of the file

    /// Whether the file was written.
    explicit operator bool() const { return !error; }
};

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

/// What a read gave: a tree, or the reason why there is none.
struct SceneFileReadResult {
    NodePtr root; ///< has no parent and the count 0: the caller takes the first reference; null on error
    std::optional<SceneFileError> error;    ///< none after a success
    std::vector<SceneFileWarning> warnings; ///< what is not in the tree as it is in the file

    /// Whether there is a tree.
    explicit operator bool() const { return static_cast<bool>(root); }
};

/// Writes `root` and what hangs below it to `path`. What stood there before is replaced at one stroke when the new file
/// is complete; on failure it stays as it was and nothing new is left in the folder.
///
/// Cores, materials, meshes, arrays and file references that are shared in the tree are written once. The same tree
/// gives the same bytes. Objects of classes that the format does not know are written as their nearest known base, or
/// left out, with a warning.
SceneFileWriteResult writeSceneFile(const NodePtr& root, const QString& path,
                                    const SceneFileWriteOptions& options = {});

/// Reads the tree in `path`. Either the whole tree comes back, or an error and nothing is left alive.
///
/// Arrays of meshes and B-rep data stand on the memory map of the file, which lives as long as one of them does; no
/// vertex is copied. Whatever the file holds, a mesh that comes back keeps the promises of `osg::Mesh`: its indices are
/// checked here, its coordinates may be any bit pattern. Do not rewrite the file in place while its scene lives;
/// replacing it by a rename, as `writeSceneFile` does, and removing it are safe.
SceneFileReadResult readSceneFile(const QString& path, const SceneFileReadOptions& options = {});

} // namespace osg
