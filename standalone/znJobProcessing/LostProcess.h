#pragma once

#include <QByteArray>
#include <QString>

#include <functional>
#include <optional>

class znProcessJob;

namespace znJobs
{

/// The exit code of a process that did not end by itself: the machine that ran it failed. No program is known to use
/// it, and no signal makes it.
constexpr int lostExitCode = 250;

/// The exit code of a process that was a launcher and failed itself, before or while it ran the program it was given.
constexpr int launcherExitCode = 251;

/// What became of a process that a launcher ran elsewhere and that has ended here.
struct LossVerdict {
    bool lost = false;            ///< the end says nothing of the work, whatever the exit code was
    std::optional<QString> again; ///< the command line for another try of a lost one, within the same run
    int exitCode = lostExitCode;  ///< that a lost one without another try is told to have
};

/// Asked at each end of a process that nobody aborted, with its command line and the tail of its outputs; the job's
/// getExitCode() tells how it ended.
using LossJudge = std::function<LossVerdict(znProcessJob& job, const QString& command, const QByteArray& output)>;

/// Installs the one judge of the host; an empty one makes each end count as it is. Another try emits neither starting()
/// nor started(), and the job keeps its place in the queue. A lost process without another try fails its job with the
/// verdict's exit code. Gives the judge that was there before.
LossJudge setLossJudge(LossJudge judge);

LossVerdict judgeLoss(znProcessJob& job, const QString& command, const QByteArray& output);

} // namespace znJobs
