#pragma once

#include "files/Note.h"

namespace files
{

/// Why a file was not read or written.
enum class ErrorCode {
    NotFound,           ///< the file is missing; for a scene file also: it cannot be opened
    NotRegular,         ///< a folder, a pipe or a device
    NotReadable,        ///< nothing that this user may read
    Refused,            ///< named by a file that may not name it, see `references::Policy`
    ReadFailed,         ///< the system could not map or read the file
    UnknownFormat,      ///< no reader for the extension
    NotASceneFile,      ///< no scene file, or one that a transfer as text has changed
    UnsupportedVersion, ///< written by a newer program in a layout that this one does not know
    Unsupported,        ///< sound, but it needs what the reader does not have
    Empty,              ///< nothing to import in it
    Truncated,          ///< shorter or longer than its header says
    Damaged,            ///< of a mesh format, wherever
    DamagedHeader,      ///< of a scene file: its first 64 bytes
    DamagedTable,       ///< of a scene file: the table of chunks
    DamagedGraph,       ///< of a scene file: the chunk with nodes, cores and materials
    DamagedMesh,        ///< of a scene file: an array outside its chunk, a wrong length, an index without a vertex
    WrongChecksum,      ///< of a chunk, when checksums are verified
    LimitExceeded,      ///< a limit of the options, or of the layout
    OutOfMemory,        ///< memory ran out
    NothingToWrite,     ///< the root is null
    InvalidMesh,        ///< a mesh in memory that breaks the promises of `osg::Mesh`
    TooLarge,           ///< more than the 4 GiB that a binary glTF file can have
    CannotCreate,       ///< the output folder is missing or not writable, or the target is no regular file
    WriteFailed,        ///< the disk is full, or a size limit of the process was met
    ReaderFailed,       ///< the process that was to read the file did not come to an end of its own
    Cancelled,          ///< somebody asked for the end
    Last = Cancelled,
};

/// The code as a word for logs, such as "DamagedMesh".
const char* errorName(ErrorCode code);

/// What went wrong with a file, as a value.
struct Error : Note {
    ErrorCode code = ErrorCode::Damaged; ///< what kind of fault it is

    /// As `toString`, with the name of the code before the place.
    QString toStringWithCode() const;
};

} // namespace files
