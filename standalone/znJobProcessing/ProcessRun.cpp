#include "standalone/znJobProcessing/ProcessRun.h"

#include "protocol/ExitCode.h"
#include "standalone/znJobProcessing/ChildProcess.h"
#include "standalone/znJobProcessing/Dependence.h"
#include "standalone/znJobProcessing/JobReaper.h"
#include "standalone/znJobProcessing/LostProcess.h"
#include "standalone/znJobProcessing/ProcessOutput.h"

#include <signal.h>

#include <chrono>

namespace znJobs
{

namespace
{

constexpr std::chrono::milliseconds grace{2000};

} // namespace

ProcessRun::ProcessRun(znProcessJob& owner) : m_job(owner)
{
    m_grace.setSingleShot(true);
    m_grace.setInterval(grace);
    record().delay = std::make_unique<QTimer>();
    record().delay->setSingleShot(true);
    QObject::connect(record().delay.get(), &QTimer::timeout, [this] { endUnworked(); });
}

ProcessRun::~ProcessRun()
{
    endWorkers();
    retireProcess();
}

void ProcessRun::connectTimer()
{
    QObject::connect(&m_grace, &QTimer::timeout, &m_job, [this] { m_child->signalGroup(SIGKILL); });
}

void ProcessRun::begin()
{
    switch (record().start()) {
    case StartResult::Work:
        return launch(Launch::First);
    case StartResult::TakenBack:
        return endLater();
    case StartResult::None:
        return;
    }
}

void ProcessRun::launch(Launch which)
{
    retireProcess();
    m_child = new ChildProcess(&m_job);
    m_job.m_process = m_child;
    m_job.m_state = znCADFileTypes::JobRunning;
    record().run = RunState::Working;
    QObject::connect(m_child, &QProcess::started, &m_job, [this, which] { processStarted(which); });
    QObject::connect(m_child, &QProcess::errorOccurred, &m_job, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart) {
            m_child->endGroup();
            endLater();
        }
    });
    QObject::connect(
        m_child, qOverload<int, QProcess::ExitStatus>(&QProcess::finished), &m_job,
        [this](int code, QProcess::ExitStatus status) { processEnded(code == 0 && status == QProcess::NormalExit); });
    m_child->launch(m_job.m_command);
}

/// The object may be emitting the signal that led here, so it goes later, with the job at the latest.
void ProcessRun::retireProcess()
{
    if (!m_child) {
        return;
    }
    m_child->endNow();
    m_child->deleteLater();
    if (record().busy > 0) {
        m_child->setParent(nullptr);
    }
    m_child = nullptr;
    m_job.m_process = nullptr;
}

/// Another process in place of one that was lost is nothing new to anybody.
void ProcessRun::processStarted(Launch which)
{
    const BusyScope busy(m_job);
    if (record().aborted) {
        ask();
    }
    if (which == Launch::First) {
        Q_EMIT m_job.started();
    }
}

void ProcessRun::processEnded(bool clean)
{
    m_child->endGroup(); // what the process left behind
    const LossVerdict verdict =
        record().aborted ? LossVerdict() : judgeLoss(m_job, m_job.m_command, m_child->outputTail());
    if (verdict.lost && verdict.again) {
        return tryAgain(*verdict.again);
    }
    if (verdict.lost) {
        m_child->setLost(verdict.exitCode);
    }
    end(clean && !record().aborted && !verdict.lost);
}

/// The run has not ended, so it begins with no signal of its own.
void ProcessRun::tryAgain(const QString& command)
{
    const BusyScope busy(m_job);
    m_job.m_command = command;
    launch(Launch::Again);
}

/// An end without the end of a process comes after run(), like any other.
void ProcessRun::endLater()
{
    record().run = RunState::Delayed;
    record().delay->start(0);
}

/// finish() judges a process that could not be started; of one that was never launched it has nothing to judge.
void ProcessRun::endUnworked()
{
    record().aborted ? record().endWithoutRun() : end(false);
}

void ProcessRun::end(bool clean)
{
    const BusyScope busy(m_job);
    m_grace.stop();
    m_job.m_state = clean ? znCADFileTypes::JobSucceeded : znCADFileTypes::JobFailed;
    record().finishRun();
}

void ProcessRun::abort()
{
    const BusyScope busy(m_job);
    if (!record().abort()) {
        return;
    }
    for (const std::shared_ptr<JobRecord>& worker : workersOf(record())) {
        if (worker->job) {
            worker->job->abort();
        }
    }
    if (busy.alive() && m_child && m_child->state() == QProcess::Running) {
        ask();
    }
}

/// Not before the program runs: until then the child would handle the signal as the host does.
void ProcessRun::ask()
{
    if (!m_grace.isActive()) {
        m_child->signalGroup(SIGTERM);
        m_grace.start();
    }
}

void ProcessRun::endWorkers()
{
    for (const std::shared_ptr<JobRecord>& worker : workersOf(record())) {
        if (worker->job) {
            of(static_cast<znProcessJob&>(*worker->job)).endSilently();
        }
    }
}

void ProcessRun::endSilently()
{
    endWorkers();
    m_grace.stop();
    record().delay->stop();
    if (m_child) {
        m_child->endNow();
    }
    record().run = RunState::Idle;
    record().aborted = true;
    stopWorking(record());
    m_job.m_state = znCADFileTypes::JobFailed;
    if (!m_job.parent()) {
        m_job.blockSignals(true);
        JobReaper::instance().take(JobRecord::of(m_job));
    }
}

/// The abort is ours, and so is the code that tells it: how the process took it says nothing about the work.
std::optional<int> ProcessRun::exitCode() const
{
    const RunState run = record().run;
    const bool goesOn = run == RunState::Starting || run == RunState::Delayed || run == RunState::Working;
    if (record().aborted && !goesOn) {
        return protocol::number(protocol::ExitCode::Cancelled);
    }
    return m_child ? readExitCode(*m_child) : std::nullopt;
}

QString ProcessRun::describeFailure() const
{
    if (record().aborted) {
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
