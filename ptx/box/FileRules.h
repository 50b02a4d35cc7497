#pragma once

#include <optional>
#include <string>
#include <vector>

namespace ptx::box
{

/// Which files the process may use, by their folders. What is not there gives nothing.
struct FileAccess {
    std::vector<std::string> readable; ///< folders with all below them, or single files
    std::vector<std::string> writable; ///< folders in which files are made, written, renamed and removed
    std::vector<std::string> programs; ///< files that may be executed
    std::vector<std::string> listed;   ///< folders whose names may be read, with all below them
};

/// The version of the kernel's rules for files (Landlock); 0 where there are none.
int fileRulesVersion();

/// Holds this thread and all that comes of it to `access` for good: no other file is opened, made, removed or executed.
/// From version 4 on no connection is made either, and from 6 on no signal reaches what is outside. No further rights
/// come by programs that have more than their user.
/// @return what went wrong; nothing when the rules hold
std::optional<std::string> restrictFiles(const FileAccess& access);

} // namespace ptx::box
