#pragma once

#include "host/OSGSystem/Node.h"

#include <QString>

#include <cstdint>
#include <optional>
#include <vector>

/// Readers of mesh formats: one file in, one tree out.
///
/// A tree is in millimetres, right-handed, Z up; colours are display colours. Formats that fix another unit or axis are
/// brought to that by a transform; formats that fix none come in as they are, unless the options say otherwise. A read
/// has no state outside its arguments and its result, starts no thread and throws nothing.
namespace formats
{

enum class ReadErrorCode {
    NotFound,
    NotReadable,   ///< a folder, a pipe or a device, or nothing that this user may read
    UnknownFormat, ///< no reader for the extension
    Empty,         ///< nothing to import in it
    Damaged,
    Unsupported, ///< sound, but it needs what the reader does not have
    LimitExceeded,
    OutOfMemory,
};

/// The code as a word for logs, such as "LimitExceeded".
const char* readErrorName(ReadErrorCode code);

/// Something to tell about a file.
struct ReadNote {
    QString message; ///< for people; without file and place
    QString file;    ///< the file that it is about, which may be one that the main file refers to
    QString place;   ///< where in the file, as near as it is known: a line, a byte or an element; may be empty

    /// File, message and place in one line.
    QString toString() const;
};

struct ReadError : ReadNote {
    ReadErrorCode code = ReadErrorCode::Damaged;
};

enum class UpAxis { Y, Z };

/// What a file may cost before it is refused. Counts are held against these limits before memory is taken for them.
struct ReadLimits {
    std::uint64_t maxFileBytes = (std::uint64_t(1) << 32) - 1; ///< with all files that it refers to
    std::uint64_t maxNodes = std::uint64_t(1) << 22;
    /// Of all geometries together. A shared array counts once; where vertices carry more than a position, each array
    /// counts.
    std::uint64_t maxVertices = std::uint64_t(1) << 28;
    std::uint64_t maxDepth = 10'000; ///< of the tree
};

struct ReadOptions {
    UpAxis upAxis = UpAxis::Z;       ///< of formats that do not fix it (OBJ, PLY, VRML)
    double millimetresPerUnit = 1.0; ///< of formats that do not fix it (OBJ, PLY, VRML)
    /// VRML files mean what their standard says: metres, Y up. Otherwise unit and axis are those above.
    bool vrmlInMetres = false;
    ReadLimits limits;
};

struct ReadResult {
    /// A plain group without a parent and with the count 0: the caller takes the first reference. It bears the name of
    /// the file without folder and extension; meshes and transforms hang below it. Null on error, and then nothing that
    /// was made for it is left alive.
    osg::NodePtr root;
    std::optional<ReadError> error;
    /// What is not as in the file; also with an error. After a hundred of them the rest is counted in one.
    std::vector<ReadNote> warnings;

    explicit operator bool() const { return static_cast<bool>(root); }
};

} // namespace formats
