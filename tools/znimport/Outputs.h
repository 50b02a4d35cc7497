#pragma once

#include "tools/znimport/CommandLine.h"

#include <QStringList>

#include <atomic>
#include <functional>

class znStandaloneSession;

/// What a run writes besides its messages.
namespace outputs
{

/// The sentence that says what is wrong with the wishes of the command line for outputs; nothing when they can be tried.
std::optional<QString> complaint(const CommandLine& line);

/// How writing went.
struct Result {
    std::optional<QString> error; ///< names the file; what was not written before is not there
    QStringList warnings;
};

/// Writes the files that the command line asks for: the scene of `session` with its variants and cameras, and a picture
/// of it, from where the session looks unless the command line names a view. `progress` is told the percent of a picture; `cancel` ends it.
Result write(const CommandLine& line, znStandaloneSession& session, const std::function<void(unsigned)>& progress,
             const std::atomic<bool>& cancel);

} // namespace outputs
