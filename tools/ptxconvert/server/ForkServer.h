#pragma once

#include <functional>
#include <string>
#include <vector>

namespace ptxconvert
{

/// What a forked process does with its arguments; it ends with the code.
using ForkedWork = std::function<int(const std::vector<std::string>& arguments)>;

/// Waits at `socket`, a path that does not exist yet, for requests of `ptxlaunch`, and forks a process for each: the
/// leader of a group of its own, with the folder, the environment and the standard streams of the launcher, as if this
/// process had just started. It dies with its launcher and with this process, which has one thread.
/// @return why it cannot wait, as an error number; it does not return as long as it can
int serve(const std::string& socket, const ForkedWork& work);

} // namespace ptxconvert
