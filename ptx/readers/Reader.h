#pragma once

#include "ptx/core/Outcome.h"
#include "ptx/model/Job.h"
#include "ptx/model/Model.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace ptx::readers
{

/// How far the beginning of a file speaks for a format.
enum class Match {
    No,
    Possible, ///< enough when the extension says the same
    Certain
};

/// One format that can be read. Adding a format is a folder with its reader and a row in the program's ReaderTable.cpp.
struct Format {
    const char* name;                        ///< for a person
    std::span<const char* const> extensions; ///< lower case, without the dot
    /// Whether a file that begins with `head` (up to 64 kB) and is `size` bytes long is of this format.
    Match (*probe)(std::string_view head, std::uint64_t size);
    /// Reads the whole file and makes its meshes. A file without any geometry is a failure with its cause.
    core::Outcome<model::Model> (*read)(const model::Job& job);
    /// Whether the file may name parts in other files, by a cheap look; null when no file of the format does: it is
    /// there for the extensions of which `protocol::mayNamePartFiles` holds.
    bool (*refersToParts)(const std::string& path) = nullptr;
    /// Whether damaged files of the format can keep the CAD kernel busy for ever: work without progress is limited.
    bool canLoop = false;
    /// The names that a file gives for its parts, as it writes them, by the same look; null when no file of the format
    /// does.
    std::vector<std::string> (*partNames)(const std::string& path) = nullptr;
};

/// Ends a run that is to keep parts in other files apart (`wanted`) when the file names none. A reader asks as soon as
/// it knows, and none decides it otherwise.
inline core::Trouble requireExternalParts(bool wanted, bool namesParts)
{
    if (!wanted || namesParts)
        return std::nullopt;
    return core::Failure{core::ExitCode::NoExternalParts, "the file names no part in another file"};
}

/// The formats of a program, in the order in which they are probed.
using Formats = std::span<const Format>;

} // namespace ptx::readers
