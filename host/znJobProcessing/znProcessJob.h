#pragma once

#include "host/znJobProcessing/znAbstractJob.h"

#include <QProcess>

#include <memory>
#include <optional>

namespace znJobs
{
class ProcessRun;
}

/// A job whose work is a child process.
///
/// run() emits starting(), whose slots may still change the command, and launches the process; started() follows from
/// the event loop when the program runs. When the process has ended, the frame sets the state, JobSucceeded for a
/// normal end with exit code 0 and JobFailed for everything else, and calls finish(). A process that could not be
/// started ends in the same way, without started().
///
/// The command line is split by QProcess::splitCommand(): blanks separate, double quotes hold a word together, three
/// double quotes make one, and nothing else is special. No shell sees it.
///
/// **Abort.** The process and what it started are asked to stop, and killed two seconds later if they still run.
/// finished(JobFailed) follows when the process has ended, whatever its exit code: a job that was aborted neither
/// succeeds nor runs again, a run() inside its finish() is taken back. That end comes from the event loop.
///
/// **Going on.** A finish() may leave the end of the run to another job that works for this one (workFor()). When that
/// has ended, a slot on its finished() calls run(), which goes on with the run, or znAbstractJob::finish(). Until then
/// run() is refused.
///
/// **The process** leads a process group of its own; when it ends, however it does, the rest of the group is killed.
/// The group dies with the host. Its standard input is empty. Both outputs are read as they come, while the event loop
/// turns, and their last 64 KiB are kept.
class ZN_HOST_EXPORT znProcessJob : public znAbstractJob
{
    Q_OBJECT

public:
    ///@{
    /// `command` is the command line that run() launches. Without it the command is empty, and a slot of starting() or
    /// a subclass sets it.
    explicit znProcessJob(QObject* parent);
    znProcessJob(const QString& command, QObject* parent);
    ///@}

    /// Kills a process that runs, and has seen its end when it returns.
    ~znProcessJob() override;

    void run() override;
    void abort() override;

    /// Makes the next run of this job, which is not running now, work for `other`, until it has ended: abort of the
    /// other aborts it too. Destruction of the other ends it without a signal, and deletes it if it has no parent.
    /// Refused with a warning when this job runs or the other works for it.
    void workFor(znProcessJob& other);

    /// How the process of the last run ended: its exit code; 128 + n if signal n ended it; -1 for 255, which is how an
    /// exit code of -1 arrives; 21 for a run that was aborted, however its process ended. Nothing if it runs, could not
    /// be started or none was launched yet.
    std::optional<int> getExitCode() const;

protected:
    /// Sets the error text of a failed run, clears that of a good one, and ends the run.
    void finish() override;
    void createBaseConnections() override;

    /// Why a process ended with `exitCode`, for the user.
    virtual QString getErrorDescription(int exitCode) const;

    /// The process of the last run, owned by the job; null before the first launch. Each launch makes a new one. In
    /// finish() it tells exitCode(), exitStatus() and error().
    QProcess* m_process = nullptr;

    /// The command line that run() launches.
    QString m_command;

    /// Whether the input file of the command was there. The open host launches the process in either case and lets it
    /// tell what is missing.
    bool m_inputPresent = true;

private:
    friend class znJobs::ProcessRun;

    const std::unique_ptr<znJobs::ProcessRun> m_run;
};
