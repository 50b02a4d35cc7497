#pragma once

#include "standalone/znJobProcessing/QueueRecord.h"

#include <QObject>

#include <vector>

namespace znJobs
{

/// Shares the means of the host among the queues: process slots, and one place for a processing job. It belongs to the
/// application object, in whose event loop it works; all queues of the process are its business.
///
/// The next job is that of the highest priority over all active queues; among classes of equal priority the one that
/// was served longest ago. So that none starves, a class that was overtaken four times as often as there are classes
/// goes first.
class JobScheduler : public QObject
{
public:
    static JobScheduler& instance();

    static void enlist(const std::shared_ptr<QueueRecord>& queue);
    static void dismiss(const std::shared_ptr<QueueRecord>& queue);

    /// Starts what may start, from the event loop.
    void postDispatch();

    /// Starts the process jobs that may start, at once: a free process slot doesn't wait for the next turn of the loop.
    void startProcesses() { dispatch(JobKind::Process); }

    /// Gives back the slot of `job`, if it holds one.
    static void release(JobRecord& job);

    /// Whether more than one process job runs, or one waits in a queue that was started.
    bool hasSiblingProcesses() const { return m_processes > 1 || !candidates(JobKind::Process).empty(); }

    /// Spans each call of process(), also of jobs that no queue started.
    class ProcessingScope
    {
    public:
        ProcessingScope();
        ~ProcessingScope();
        ProcessingScope(const ProcessingScope&) = delete;
        ProcessingScope& operator=(const ProcessingScope&) = delete;

    private:
        const QPointer<JobScheduler> m_scheduler;
    };

protected:
    void customEvent(QEvent* event) override;

private:
    template <typename T>
    friend T& applicationOwned();

    struct Candidate {
        QueueRecord* queue = nullptr;
        int priority = 0;
        WaitingClass* jobs = nullptr;
    };

    JobScheduler();

    unsigned& placesFor(JobKind kind) { return kind == JobKind::Process ? m_processes : m_processingJobs; }
    std::vector<Candidate> candidates(JobKind kind) const;
    std::shared_ptr<JobRecord> takeNext(JobKind kind);
    bool hasSlot(JobKind kind) const;
    void dispatch(JobKind kind);

    unsigned m_processes = 0;       ///< slots held by process jobs
    unsigned m_processingJobs = 0;  ///< slots held by processing jobs
    unsigned m_processingDepth = 0; ///< calls of process() on the stack
    bool m_dispatchPosted = false;
};

} // namespace znJobs
