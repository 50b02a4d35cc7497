#pragma once

#include "files/Error.h"
#include "ptx/box/Box.h"
#include "ptx/core/CommandLine.h"
#include "ptx/core/Outcome.h"
#include "ptx/core/Progress.h"

#include <functional>
#include <string>
#include <vector>

/// Reads on behalf of a host, in the box, within the limits and with the log of a conversion.
namespace ptx::conversion
{

/// What a host asks for.
struct HostRequest {
    std::string input;
    std::string output;
    std::vector<std::string> words; ///< options of the kind of read
    core::Settings settings;        ///< the limits
    core::Sandbox sandbox = core::Sandbox::On;
};

/// `arguments` are the option that asks for the kind of read, the file to read, the file to make, and any number of
/// words: limits of this run as --set takes them, --sandbox with its wish, and others.
core::Outcome<HostRequest> hostRequestOf(const std::vector<std::string>& arguments);

/// Prints why a request cannot be served, and gives the exit code for that.
core::ExitCode refuse(const core::Failure& failure);
/// Why `word` cannot be an option of reading.
core::Failure strangeWord(const std::string& word);

/// Locks the process in for `work`, and runs `read`. A signal removes the file `unfinished`.
core::ExitCode runForHost(const HostRequest& request, const box::Work& work, const std::string& unfinished,
                          const std::function<core::Trouble(core::Progress& progress)>& read);

/// Writes `bytes` to `path`, the output or a file beside it.
core::Trouble writeForHost(const std::string& path, const std::string& bytes);

/// The exit code for what became of a file.
core::ExitCode exitCodeOf(files::ErrorCode code);

} // namespace ptx::conversion
