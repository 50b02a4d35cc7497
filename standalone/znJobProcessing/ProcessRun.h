#pragma once

#include "host/znJobProcessing/znProcessJob.h"
#include "standalone/znJobProcessing/JobRecord.h"

#include <QByteArray>
#include <QPointer>
#include <QString>
#include <QTimer>

#include <optional>

namespace znJobs
{

class ChildProcess;

/// The runs of one process job.
class ProcessRun
{
public:
    explicit ProcessRun(znProcessJob& owner);
    ~ProcessRun();
    ProcessRun(const ProcessRun&) = delete;
    ProcessRun& operator=(const ProcessRun&) = delete;

    static ProcessRun& of(const znProcessJob& owner) { return *owner.m_run; }

    void begin();
    void abort();

    /// Connects what lasts as long as the job.
    void connectTimer();

    /// As znProcessJob::getExitCode().
    std::optional<int> exitCode() const;

    /// Why the last run failed, for a job that doesn't look itself.
    QString describeFailure() const;

    QByteArray outputTail() const;

private:
    enum class Launch { First, Again };

    JobRecord& record() const { return *JobRecord::of(m_job); }

    void launch(Launch which);
    void retireProcess();
    void ask();

    void processStarted(Launch which);
    void processEnded(bool clean);
    void tryAgain(const QString& command);

    void endLater();
    void endUnworked();
    void end(bool clean);
    void endWorkers();
    void endSilently();

    znProcessJob& m_job;
    QPointer<ChildProcess> m_child; ///< the same as the job's m_process
    QTimer m_grace;                 ///< from the wish to stop to the kill
};

} // namespace znJobs
