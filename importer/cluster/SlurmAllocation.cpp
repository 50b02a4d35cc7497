#include "importer/cluster/SlurmAllocation.h"

#include <QProcess>
#include <QProcessEnvironment>

#include <csignal>
#include <sys/prctl.h>
#include <unistd.h>

namespace importer::cluster
{

namespace
{

// One line a fact, then an end that comes with the end of the input.
const char holder[] = R"sh(
job=$(scontrol -o show job "$SLURM_JOB_ID") || exit 1
printf 'job=%s\ncores=%s\n' "$SLURM_JOB_ID" "$SLURM_JOB_CPUS_PER_NODE"
printf '%s\n' "$job" | tr ' ' '\n' | sed -n 's/^\(Alloc\)\{0,1\}TRES=/tres=/p' | head -n 1
scontrol show hostnames "$SLURM_JOB_NODELIST" | sed 's/^/node=/'
echo ready
exec cat >/dev/null
)sh";

constexpr int keptBytes = 64 * 1024;

/// Dies with this process, and hears nothing of the terminal's signals, which ask this process to end in good order.
class Holder : public QProcess
{
protected:
    void setupChildProcess() override
    {
        ::setpgid(0, 0);
        ::prctl(PR_SET_PDEATHSIG, SIGTERM);
        for (const int number : {SIGTERM, SIGINT, SIGHUP, SIGPIPE})
            ::signal(number, SIG_DFL);
    }
};

QStringList sallocWords(const AllocationWish& wish)
{
    QStringList words{QStringLiteral("--no-kill"), QStringLiteral("--job-name=znimport")};
    if (wish.nodes > 0)
        words << QStringLiteral("--nodes=%1").arg(wish.nodes);
    if (!wish.partition.isEmpty())
        words << QStringLiteral("--partition=") + wish.partition;
    return words + wish.words;
}

void forgetSurroundingJob()
{
    const QStringList kept{QStringLiteral("SLURM_CONF"), QStringLiteral("SLURM_JWT")};
    for (const QString& name : QProcessEnvironment::systemEnvironment().keys())
        if (name.startsWith(QLatin1String("SLURM_")) && !kept.contains(name))
            qunsetenv(name.toLocal8Bit().constData());
}

} // namespace

SlurmAllocation::SlurmAllocation(QObject* parent) : QObject(parent) {}

SlurmAllocation::~SlurmAllocation()
{
    release();
}

bool SlurmAllocation::isWithinOne()
{
    return !qEnvironmentVariableIsEmpty("SLURM_JOB_ID");
}

void SlurmAllocation::acquire(const AllocationWish& wish)
{
    m_process = std::make_unique<Holder>();
    connect(m_process.get(), &QProcess::readyReadStandardOutput, this, &SlurmAllocation::readOutput);
    connect(m_process.get(), &QProcess::readyReadStandardError, this, &SlurmAllocation::readErrors);
    connect(m_process.get(), qOverload<int, QProcess::ExitStatus>(&QProcess::finished), this,
            &SlurmAllocation::processEnded);
    connect(
        m_process.get(), &QProcess::errorOccurred, this,
        [this](QProcess::ProcessError error) {
            if (error == QProcess::FailedToStart)
                processEnded();
        },
        Qt::QueuedConnection);
    m_isBorrowed = isWithinOne();
    const QStringList shell{QStringLiteral("sh"), QStringLiteral("-c"), QString::fromLatin1(holder)};
    if (m_isBorrowed)
        m_process->start(shell[0], shell.mid(1));
    else
        m_process->start(QStringLiteral("salloc"), sallocWords(wish) + shell);
    forgetSurroundingJob();
}

void SlurmAllocation::readOutput()
{
    m_output += m_process->readAllStandardOutput();
    if (m_isGranted || !m_output.endsWith("ready\n"))
        return;
    std::optional<Allocation> allocation = parseAllocation(m_output);
    if (!allocation) {
        release();
        Q_EMIT refused(tr("the scheduler tells nothing of the allocation that can be understood"));
        return;
    }
    m_isGranted = true;
    allocation->isBorrowed = m_isBorrowed;
    Q_EMIT granted(*allocation);
}

void SlurmAllocation::readErrors()
{
    m_errors = (m_errors + m_process->readAllStandardError()).right(keptBytes);
    if (m_isGranted)
        for (const QString& node : failedNodes(m_errors))
            Q_EMIT nodeFailed(node);
    const QString text = waitingFor(m_errors);
    if (!m_isGranted && !text.isEmpty() && text != m_told) {
        m_told = text;
        Q_EMIT waiting(text);
    }
}

void SlurmAllocation::processEnded()
{
    readErrors();
    const QString program = m_process->program();
    const QString reason = m_process->error() == QProcess::FailedToStart
                               ? tr("%1 cannot be started: is Slurm installed here?").arg(program)
                               : refusal(m_errors);
    m_process.release()->deleteLater();
    if (m_isGranted)
        Q_EMIT ended(reason);
    else
        Q_EMIT refused(reason.isEmpty() ? tr("%1 gave none").arg(program) : reason);
}

void SlurmAllocation::release()
{
    if (!m_process)
        return;
    m_process->blockSignals(true);
    m_process->closeWriteChannel();
    if (!m_isGranted)
        m_process->terminate();
    if (m_process->state() != QProcess::NotRunning && !m_process->waitForFinished(5000)) {
        m_process->terminate();
        if (!m_process->waitForFinished(5000))
            m_process->kill();
    }
    m_process.release()->deleteLater();
}

} // namespace importer::cluster
