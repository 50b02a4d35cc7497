#include "standalone/znJobProcessing/ChildProcess.h"

#include "protocol/ExitCode.h"

#include <signal.h>
#include <sys/prctl.h>
#include <unistd.h>

namespace znJobs
{

namespace
{

constexpr int outputLimit = 64 * 1024;

} // namespace

std::optional<int> readExitCode(const QProcess& process)
{
    if (process.state() != QProcess::NotRunning || process.error() == QProcess::FailedToStart) {
        return std::nullopt;
    }
    if (const auto* child = dynamic_cast<const ChildProcess*>(&process); child && child->lostCode()) {
        return child->lostCode();
    }
    if (process.exitStatus() == QProcess::CrashExit) {
        return protocol::exitCodeOfSignal(process.exitCode());
    }
    return process.exitCode() == 255 ? -1 : process.exitCode();
}

ChildProcess::ChildProcess(QObject* parent) : QProcess(parent), m_host(::getpid())
{
    setProcessChannelMode(QProcess::MergedChannels);
    setStandardInputFile(QProcess::nullDevice());
    connect(this, &QProcess::readyReadStandardOutput, this, [this] { readOutput(); });
}

ChildProcess::~ChildProcess()
{
    endNow();
}

void ChildProcess::launch(const QString& command)
{
    QStringList words = splitCommand(command);
    setProgram(words.isEmpty() ? QString() : words.takeFirst());
    setArguments(words);
    start(QIODevice::ReadOnly);
    m_group = processId();
    if (m_group > 0) {
        // The child does the same. Whoever comes first, the group is there before anybody sends it a signal.
        ::setpgid(static_cast<pid_t>(m_group), static_cast<pid_t>(m_group));
        m_watcher = std::make_unique<GroupWatcher>(static_cast<pid_t>(m_group));
    }
}

/// Runs in the child between fork and exec: only calls that are safe in a signal handler.
void ChildProcess::setupChildProcess()
{
    ::setpgid(0, 0);
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (::getppid() != m_host) {
        ::_exit(1); // the host died before the line above
    }
    for (const int number : {SIGTERM, SIGINT, SIGHUP, SIGQUIT, SIGCHLD}) {
        ::signal(number, SIG_DFL);
    }
    sigset_t none;
    ::sigemptyset(&none);
    ::sigprocmask(SIG_SETMASK, &none, nullptr);
}

void ChildProcess::signalGroup(int signal) const
{
    if (m_group > 0) {
        ::kill(static_cast<pid_t>(-m_group), signal);
    }
}

void ChildProcess::endGroup()
{
    signalGroup(SIGKILL);
    m_watcher.reset(); // until now the number of the group was taken
    m_group = 0;
}

void ChildProcess::endNow()
{
    blockSignals(true);
    if (state() != QProcess::NotRunning) {
        signalGroup(SIGKILL);
        waitForFinished();
    }
    m_watcher.reset();
}

void ChildProcess::close()
{
    endNow();
    QProcess::close();
}

void ChildProcess::readOutput()
{
    m_output += readAllStandardOutput();
    if (m_output.size() > 2 * outputLimit) {
        m_output = m_output.right(outputLimit);
    }
}

QByteArray ChildProcess::outputTail() const
{
    return m_output.right(outputLimit);
}

} // namespace znJobs
