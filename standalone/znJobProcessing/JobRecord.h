#pragma once

#include "host/znJobProcessing/znAbstractJob.h"

#include <QTimer>

#include <cstdint>
#include <memory>

namespace znJobs
{

class QueueRecord;

/// What a job takes a share of: the process slots of the host, or the one place for work on its own thread.
enum class JobKind { Processing, Process };

enum class JobPhase {
    Free,    ///< in no queue
    Waiting, ///< in a queue, not started by it
    Started, ///< in a queue, started by it
    Ending,  ///< taken out of the waiting jobs to end without a run, its finished() not yet delivered
};

/// What the frame knows about one job. Outlives the job while somebody holds it, which is how the frame's functions
/// notice that a slot destroyed the job under them.
class JobRecord : public std::enable_shared_from_this<JobRecord>
{
public:
    explicit JobRecord(znAbstractJob& owner) : job(&owner) {}

    static const std::shared_ptr<JobRecord>& of(const znAbstractJob& owner) { return owner.m_record; }

    /// Ends the job with finished(JobFailed), past the subclass, whose finish() judges runs that took place.
    void endWithoutRun();

    /// finished() was delivered: the queue lets go of the job, the slot is free.
    void ended();

    /// The job is being destroyed.
    void destroyed();

    znAbstractJob* job; ///< null once the job is destroyed
    JobKind kind = JobKind::Processing;

    std::shared_ptr<QueueRecord> queue;
    JobPhase phase = JobPhase::Free;
    int priority = 0;
    std::uint64_t ticket = 0; ///< the order in which jobs were added, over all queues

    bool holdsSlot = false;
    bool deletedWhenEnded = false; ///< by a deleting queue that was destroyed before the job ended
    int busy = 0;                  ///< functions of the job on the stack
    bool condemned = false;        ///< to be deleted as soon as it isn't busy

    int working = 0;               ///< calls of process() on the stack
    bool announced = false;        ///< the innermost of them has emitted processingFinished()
    std::unique_ptr<QTimer> delay; ///< of a timer job
};

/// Keeps the reaper from a job while one of its functions is on the stack.
class BusyScope
{
public:
    explicit BusyScope(const znAbstractJob& job) : m_record(JobRecord::of(job)) { ++m_record->busy; }
    ~BusyScope();
    BusyScope(const BusyScope&) = delete;
    BusyScope& operator=(const BusyScope&) = delete;

    /// False once the job was destroyed: nothing of it may be touched.
    bool alive() const { return m_record->job != nullptr; }

private:
    const std::shared_ptr<JobRecord> m_record;
};

} // namespace znJobs
