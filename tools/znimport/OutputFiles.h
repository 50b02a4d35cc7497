#pragma once

#include "tools/znimport/CommandLine.h"

#include <QStringList>

#include <atomic>
#include <functional>

namespace zn
{
class StandaloneSession;
} // namespace zn

namespace znimport
{

/// The sentence that says what is wrong with the wishes of the command line for outputs; nothing when they can be
/// tried.
std::optional<QString> outputComplaint(const CommandLine& line);

/// The sentence that names the first file to be written whose folder is not there; nothing when all are.
std::optional<QString> folderComplaint(const CommandLine& line);

/// The files that a run writes besides its messages, and how that went.
struct WrittenOutputs {
    std::optional<QString> error; ///< names the file; what was not written before is not there
    QStringList warnings;
    QStringList files; ///< that were written
};

/// Writes the files that the command line asks for: the scene of `session` with its variants and cameras, a picture
/// of it and one of each variant set, from where the session looks unless the command line names a view. Sets are taken
/// back once they are drawn. `progress` is told the percent of a picture; `cancel` ends it.
WrittenOutputs writeOutputs(const CommandLine& line, zn::StandaloneSession& session,
                            const std::function<void(unsigned)>& progress, const std::atomic<bool>& cancel);

} // namespace znimport
