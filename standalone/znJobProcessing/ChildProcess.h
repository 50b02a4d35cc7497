#pragma once

#include "standalone/znJobProcessing/GroupWatcher.h"

#include <QByteArray>
#include <QProcess>

#include <memory>
#include <optional>

namespace znJobs
{

/// The exit code of an ended process as znProcessJob::getExitCode() tells it.
std::optional<int> readExitCode(const QProcess& process);

/// A child process that leads its own process group, which dies with this process.
class ChildProcess : public QProcess
{
public:
    explicit ChildProcess(QObject* parent);

    /// Kills a process that runs, and waits for its end.
    ~ChildProcess() override;

    /// Splits `command` and starts it. The group exists when this returns, if the start got so far.
    void launch(const QString& command);

    /// Sends `signal` to every process of the group. The id of the group stays taken while one of them lives, and the
    /// watcher does until endGroup().
    void signalGroup(int signal) const;

    /// Kills what is left of the group of a process that has ended or could not be started.
    void endGroup();

    /// Kills the group and waits for the end of the process; no signal of this object comes any more.
    void endNow();
    /// The same, for who knows it as a QProcess.
    void close() override;

    /// The last 64 KiB of both outputs.
    QByteArray outputTail() const;

    /// Makes the end of the process count as that of one that was lost, with this exit code.
    void setLost(int exitCode) { m_lostCode = exitCode; }
    std::optional<int> lostCode() const { return m_lostCode; }

protected:
    void setupChildProcess() override;

private:
    void readOutput();

    const qint64 m_host; ///< the process that may live longest
    qint64 m_group = 0;
    std::unique_ptr<GroupWatcher> m_watcher;
    std::optional<int> m_lostCode;
    QByteArray m_output;
};

} // namespace znJobs
