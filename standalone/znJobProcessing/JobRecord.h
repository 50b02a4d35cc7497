#pragma once

#include "host/znJobProcessing/znAbstractJob.h"

#include <QPointer>
#include <QTimer>

#include <cstdint>
#include <memory>
#include <vector>

namespace znJobs
{

class JobScheduler;
class QueueRecord;

/// What a job takes a share of: the process slots of the host, or the one place for work on its own thread.
enum class JobKind { Processing, Process };

enum class JobPhase {
    Free,       ///< in no queue
    Waiting,    ///< in a queue, not started by it
    Started,    ///< in a queue, started by it
    Ending,     ///< taken out of the waiting jobs to end without a run, its finished() not yet emitted
    Announcing, ///< in a queue that has to let go of it, its finished() being delivered
};

/// Where a job's run is.
enum class RunState {
    Idle,      ///< no run goes on
    Starting,  ///< starting() is being delivered
    Delayed,   ///< the timer is awaited: with the work of a timer job, or the end of a process job without a process
    Working,   ///< process() or a child process is at work
    Finishing, ///< the work has ended, finish() decides how the run goes on
    Awaiting,  ///< finish() has left that to another: a job that works for this one, or a slot
};

/// What became of a call of run().
enum class StartResult {
    None,      ///< it was refused, or a slot destroyed the job
    TakenBack, ///< the run was aborted before its work began
    Work,      ///< the work begins
};

/// What the frame knows about one job. Outlives the job while somebody holds it, which is how the frame's functions
/// notice that a slot destroyed the job under them.
class JobRecord : public std::enable_shared_from_this<JobRecord>
{
public:
    explicit JobRecord(znAbstractJob& owner) : job(&owner) {}

    static const std::shared_ptr<JobRecord>& of(const znAbstractJob& owner) { return owner.m_record; }

    /// Whether run() is taken now: to begin a run, or to go on with one that its finish() has not ended.
    bool takesRun() const;

    /// Begins a run or goes on with one, up to the end of starting().
    StartResult start();

    /// Decides for every job and state what abort() means. True if a child process, or a job that works for this one,
    /// has to be stopped for it.
    bool abort();

    /// Asks for the end of the run. A processing job whose work has not begun ends, whatever its class says of abort().
    void stop();

    /// The work has ended: finish() takes over.
    void finishRun();

    /// Ends the job with finished(JobFailed), past the subclass, whose finish() judges runs that took place.
    void endWithoutRun();

    /// Ends the run: emits finished(), then the queue lets go of the job and the slot is free.
    void announceEnd();

    /// Takes the job out of the queue in which it has just ended, so that another can have it. True if no queue has it.
    bool leaveEnded();

    /// The job is being destroyed.
    void destroyed();

    znAbstractJob* job; ///< null once the job is destroyed
    JobKind kind = JobKind::Processing;

    RunState run = RunState::Idle;
    bool aborted = false;          ///< the run, or the last one, has to end as failed
    std::unique_ptr<QTimer> delay; ///< ends RunState::Delayed

    std::weak_ptr<JobRecord> worksFor;             ///< see Dependence.h
    std::vector<std::weak_ptr<JobRecord>> workers; ///< the other end of it

    std::shared_ptr<QueueRecord> queue;
    JobPhase phase = JobPhase::Free;
    int priority = 0;
    std::uint64_t ticket = 0; ///< the order in which jobs were added, over all queues

    QPointer<JobScheduler> slotOwner; ///< whose slot the job holds
    bool deletedWhenEnded = false;    ///< by a deleting queue that was destroyed before the job ended
    int busy = 0;                     ///< functions of the job on the stack
    bool condemned = false;           ///< to be deleted as soon as it isn't busy

private:
    void deliverEnd();
    void letGo();
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
