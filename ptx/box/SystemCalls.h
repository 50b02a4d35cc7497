#pragma once

#include <optional>
#include <string>

namespace ptx::box
{

/// Leaves the process and all that comes of it the system calls of a conversion for good: files, memory, threads,
/// copies of itself, its own signals. There are no sockets, no look into other processes, no keys, no new name spaces.
/// Others fail with EPERM, those that the C library does without where they are unknown with ENOSYS.
///
/// A program may be executed: which one, the rules for files say.
/// @return what went wrong; nothing when the filter holds
std::optional<std::string> restrictSystemCalls();

} // namespace ptx::box
