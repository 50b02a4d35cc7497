#include "standalone/znJobProcessing/ProcessRun.h"

#include "standalone/znJobProcessing/ChildProcess.h"
#include "standalone/znJobProcessing/JobReaper.h"
#include "standalone/znJobProcessing/JobRecord.h"
#include "standalone/znJobProcessing/LostProcess.h"
#include "standalone/znJobProcessing/ProcessOutput.h"

#include <QtDebug>

#include <signal.h>

#include <algorithm>
#include <chrono>
#include <iterator>
#include <utility>

namespace znJobs
{

namespace
{

constexpr std::chrono::milliseconds grace{2000};

std::vector<QPointer<znProcessJob>>& finishStack()
{
    static std::vector<QPointer<znProcessJob>> jobs;
    return jobs;
}

} // namespace

FinishScope::FinishScope(znProcessJob* job)
{
    finishStack().emplace_back(job);
}

FinishScope::~FinishScope()
{
    finishStack().pop_back();
}

znProcessJob* FinishScope::innermost()
{
    return finishStack().empty() ? nullptr : finishStack().back().data();
}

ProcessRun::ProcessRun(znProcessJob& owner) : m_job(owner)
{
    m_grace.setSingleShot(true);
    m_grace.setInterval(grace);
}

ProcessRun::~ProcessRun()
{
    endDependents();
    retireProcess();
}

void ProcessRun::connectTimer()
{
    QObject::connect(&m_grace, &QTimer::timeout, &m_job, [this] { m_child->signalGroup(SIGKILL); });
}

bool ProcessRun::workGoesOn() const
{
    return m_starting || m_endPosted || (m_child && m_child->state() != QProcess::NotRunning);
}

bool ProcessRun::runGoesOn() const
{
    return m_finishing > 0 || workGoesOn() || hasDependents();
}

std::vector<QPointer<znProcessJob>> ProcessRun::dependents() const
{
    std::vector<QPointer<znProcessJob>> found;
    std::copy_if(m_dependents.begin(), m_dependents.end(), std::back_inserter(found),
                 [this](const QPointer<znProcessJob>& job) {
                     return job && of(*job).m_worksFor == &m_job && of(*job).runGoesOn();
                 });
    return found;
}

void ProcessRun::workFor(znProcessJob& other)
{
    ProcessRun& run = of(other);
    run.m_dependents = run.dependents();
    run.m_dependents.emplace_back(&m_job);
    m_worksFor = &other;
    m_aborted = m_aborted || run.m_aborted;
}

void ProcessRun::begin()
{
    if (workGoesOn()) {
        qWarning() << "run() was called on a" << m_job.metaObject()->className() << "that is running";
        return;
    }
    joinRun();
    if (!m_aborted && !announceStart()) {
        return;
    }
    m_tryingAgain = false;
    m_aborted ? postEnd(&ProcessRun::endUnlaunched) : launch();
}

/// A run() inside finish(), or while somebody works for this job, goes on with the run; any other begins a new one.
void ProcessRun::joinRun()
{
    znProcessJob* const finishing = FinishScope::innermost();
    if (finishing != &m_job && !hasDependents()) {
        m_aborted = false;
        m_worksFor = nullptr;
        if (finishing) {
            workFor(*finishing);
        }
    }
}

/// False if a slot destroyed the job.
bool ProcessRun::announceStart()
{
    const BusyScope busy(m_job);
    m_job.createBaseConnections();
    m_starting = true;
    Q_EMIT m_job.starting();
    if (busy.alive()) {
        m_starting = false;
    }
    return busy.alive();
}

void ProcessRun::launch()
{
    retireProcess();
    m_child = new ChildProcess(&m_job);
    m_job.m_process = m_child;
    m_job.m_state = znCADFileTypes::JobRunning;
    QObject::connect(m_child, &QProcess::started, &m_job, [this] { processStarted(); });
    QObject::connect(m_child, &QProcess::errorOccurred, &m_job, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart) {
            processFailedToStart();
        }
    });
    QObject::connect(
        m_child, qOverload<int, QProcess::ExitStatus>(&QProcess::finished), &m_job,
        [this](int code, QProcess::ExitStatus status) { processEnded(code == 0 && status == QProcess::NormalExit); });
    m_launching = true;
    m_child->launch(m_job.m_command);
    m_launching = false;
}

/// The object may be emitting the signal that led here, so it goes later, with the job at the latest.
void ProcessRun::retireProcess()
{
    if (!m_child) {
        return;
    }
    m_child->endNow();
    m_child->deleteLater();
    if (JobRecord::of(m_job)->busy > 0) {
        m_child->setParent(nullptr);
    }
    m_child = nullptr;
    m_job.m_process = nullptr;
}

void ProcessRun::processStarted()
{
    const BusyScope busy(m_job);
    if (m_aborted) {
        ask();
    }
    if (!m_tryingAgain) {
        Q_EMIT m_job.started();
    }
}

void ProcessRun::processFailedToStart()
{
    m_launching ? postEnd(&ProcessRun::endUnstarted) : endUnstarted();
}

void ProcessRun::processEnded(bool clean)
{
    m_child->signalGroup(SIGKILL); // what the process left behind
    const LossVerdict verdict = m_aborted ? LossVerdict() : judgeLoss(m_job, m_job.m_command, m_child->outputTail());
    if (verdict.lost && verdict.again) {
        return tryAgain(*verdict.again);
    }
    if (verdict.lost) {
        m_child->setLost();
    }
    end(clean && !m_aborted && !verdict.lost);
}

/// The run has not ended, so it begins with no signal of its own.
void ProcessRun::tryAgain(const QString& command)
{
    const BusyScope busy(m_job);
    m_job.m_command = command;
    m_tryingAgain = true;
    launch();
}

/// An end that is known inside run() comes after it, like any other.
void ProcessRun::postEnd(void (ProcessRun::*how)())
{
    m_endPosted = true;
    const auto endNow = [this, how] {
        if (std::exchange(m_endPosted, false)) {
            (this->*how)();
        }
    };
    QMetaObject::invokeMethod(&m_job, endNow, Qt::QueuedConnection);
}

void ProcessRun::endUnlaunched()
{
    JobRecord::of(m_job)->endWithoutRun();
}

void ProcessRun::endUnstarted()
{
    end(false);
}

void ProcessRun::end(bool clean)
{
    const BusyScope busy(m_job);
    const FinishScope scope(&m_job);
    m_grace.stop();
    m_job.m_state = clean ? znCADFileTypes::JobSucceeded : znCADFileTypes::JobFailed;
    ++m_finishing;
    m_job.finish();
    if (busy.alive()) {
        --m_finishing;
    }
}

bool ProcessRun::abort()
{
    if (!runGoesOn()) {
        return false;
    }
    const BusyScope busy(m_job);
    m_aborted = true;
    for (const QPointer<znProcessJob>& dependent : dependents()) {
        if (dependent) {
            dependent->abort();
        }
    }
    if (busy.alive() && m_child && m_child->state() == QProcess::Running) {
        ask();
    }
    return true;
}

/// Not before the program runs: until then the child would handle the signal as the host does.
void ProcessRun::ask()
{
    if (!m_grace.isActive()) {
        m_child->signalGroup(SIGTERM);
        m_grace.start();
    }
}

void ProcessRun::endDependents()
{
    for (const QPointer<znProcessJob>& dependent : dependents()) {
        if (dependent && (of(*dependent).workGoesOn() || of(*dependent).hasDependents())) {
            of(*dependent).endSilently();
        }
    }
}

void ProcessRun::endSilently()
{
    m_aborted = true;
    m_endPosted = false;
    m_grace.stop();
    endDependents();
    if (m_child) {
        m_child->endNow();
    }
    m_job.m_state = znCADFileTypes::JobFailed;
    if (!m_job.parent()) {
        m_job.blockSignals(true);
        JobReaper::instance().take(JobRecord::of(m_job));
    }
}

QString ProcessRun::describeFailure() const
{
    if (m_aborted) {
        return znProcessJob::tr("Aborted");
    }
    const std::optional<int> code = m_job.getExitCode();
    return code ? m_job.getErrorDescription(*code)
                : znProcessJob::tr("The process could not be started: %1").arg(m_child->errorString());
}

QByteArray processOutput(const znProcessJob& job)
{
    return ProcessRun::of(job).outputTail();
}

QByteArray ProcessRun::outputTail() const
{
    return m_child ? m_child->outputTail() : QByteArray();
}

} // namespace znJobs
