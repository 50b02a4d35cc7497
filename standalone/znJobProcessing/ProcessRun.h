#pragma once

#include "host/znJobProcessing/znProcessJob.h"

#include <QByteArray>
#include <QPointer>
#include <QString>
#include <QTimer>

#include <vector>

namespace znJobs
{

class ChildProcess;

/// Spans a call of a process job's finish(), or with null a stretch inside of one that is none of the job's business:
/// its finished(), the start of other jobs.
class FinishScope
{
public:
    explicit FinishScope(znProcessJob* job);
    ~FinishScope();
    FinishScope(const FinishScope&) = delete;
    FinishScope& operator=(const FinishScope&) = delete;

    /// The job for which work that begins now is done, if any.
    static znProcessJob* innermost();
};

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

    /// False if there is nothing that could be aborted.
    bool abort();

    /// Connects what lasts as long as the job.
    void connectTimer();

    /// Why the last run failed, for a job that doesn't look itself.
    QString describeFailure() const;

    QByteArray outputTail() const;

private:
    bool workGoesOn() const; ///< a process starts or runs, or an end is posted
    bool runGoesOn() const;  ///< the same, or finish() is on the stack, or somebody works for this job
    bool hasDependents() const { return !dependents().empty(); }
    std::vector<QPointer<znProcessJob>> dependents() const;

    void joinRun();
    void workFor(znProcessJob& other);
    bool announceStart();
    void launch();
    void retireProcess();
    void ask();

    void processStarted();
    void processFailedToStart();
    void processEnded(bool clean);
    void tryAgain(const QString& command);

    void postEnd(void (ProcessRun::*how)());
    void endUnlaunched();
    void endUnstarted();
    void end(bool clean);
    void endDependents();
    void endSilently();

    znProcessJob& m_job;
    QPointer<ChildProcess> m_child; ///< the same as the job's m_process
    QTimer m_grace;                 ///< from the wish to stop to the kill
    QPointer<znProcessJob> m_worksFor;
    std::vector<QPointer<znProcessJob>> m_dependents; ///< jobs whose m_worksFor was this one at some time
    int m_finishing = 0;                              ///< calls of finish() on the stack
    bool m_starting = false;                          ///< starting() is being emitted
    bool m_launching = false;
    bool m_endPosted = false;
    bool m_tryingAgain = false; ///< the process takes the place of one that was lost
    bool m_aborted = false;
};

} // namespace znJobs
