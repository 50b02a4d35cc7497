#include "host/znJobProcessing/znProcessJob.h"

#include "protocol/ExitCode.h"
#include "standalone/znJobProcessing/Dependence.h"
#include "standalone/znJobProcessing/JobRecord.h"
#include "standalone/znJobProcessing/ProcessRun.h"

#include <QtDebug>

znProcessJob::znProcessJob(QObject* parent) : znProcessJob(QString(), parent) {}

znProcessJob::znProcessJob(const QString& command, QObject* parent)
    : znAbstractJob(parent), m_command(command), m_run(std::make_unique<znJobs::ProcessRun>(*this))
{
    znJobs::JobRecord::of(*this)->kind = znJobs::JobKind::Process;
}

znProcessJob::~znProcessJob() = default;

void znProcessJob::run()
{
    m_run->begin();
}

void znProcessJob::abort()
{
    m_run->abort();
}

void znProcessJob::workFor(znProcessJob& other)
{
    if (!znJobs::workFor(*znJobs::JobRecord::of(*this), *znJobs::JobRecord::of(other))) {
        qWarning() << "workFor() was called on a" << metaObject()->className() << "that cannot work for the other now";
    }
}

std::optional<int> znProcessJob::getExitCode() const
{
    return m_run->exitCode();
}

void znProcessJob::finish()
{
    m_errorText = m_state == znCADFileTypes::JobFailed ? m_run->describeFailure() : QString();
    znAbstractJob::finish();
}

void znProcessJob::createBaseConnections()
{
    if (m_connectionsMade) {
        return;
    }
    m_run->connectTimer();
    m_connectionsMade = true;
}

QString znProcessJob::getErrorDescription(int exitCode) const
{
    return exitCode > protocol::SignalBase
               ? tr("The process was ended by signal %1").arg(exitCode - protocol::SignalBase)
               : tr("The process ended with exit code %1").arg(exitCode);
}
