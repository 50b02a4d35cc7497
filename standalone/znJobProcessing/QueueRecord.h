#pragma once

#include "standalone/znJobProcessing/JobRecord.h"

#include <QCoreApplication>
#include <QPointer>

#include <cstdint>
#include <map>
#include <memory>
#include <utility>
#include <vector>

class znJobQueue;

namespace znJobs
{

using JobList = std::map<std::uint64_t, std::shared_ptr<JobRecord>>; ///< by ticket, that is, in the order added

/// The jobs of one kind and priority that wait in one queue.
struct WaitingClass {
    JobList jobs;
    unsigned overtaken = 0; ///< starts of jobs of other classes since the last of its own
};

/// The state of one queue. Outlives the queue while somebody holds it.
class QueueRecord : public std::enable_shared_from_this<QueueRecord>
{
public:
    explicit QueueRecord(znJobQueue& owner) : queue(&owner) {}

    void add(znAbstractJob* job, int priority);

    /// Takes `job` from the waiting ones; it stays a member until remove().
    void takeFromWaiting(JobRecord& job, JobPhase next);

    /// Ends the membership of `job`, in whatever phase it is.
    void remove(JobRecord& job);

    void abortAll();

    /// The queue is being destroyed.
    void dissolve();

    znJobQueue* queue; ///< null once the queue is destroyed
    bool active = false;
    bool deletesEnded = false;
    int defaultPriority = znCADFileTypes::LowPriority;
    std::map<std::pair<JobKind, int>, WaitingClass> waiting; ///< by kind and priority; no class is empty

private:
    friend class DeliveryScope;

    std::vector<std::shared_ptr<JobRecord>> membersInPhase(JobPhase phase) const;
    void letGo(const std::shared_ptr<JobRecord>& job);
    void postEmptiness();
    void announceEmptiness();

    JobList m_members;
    bool m_hadJobs = false;
    int m_deliveries = 0;                         ///< calls of finished() of its jobs on the stack
    QPointer<QCoreApplication> m_emptinessPosted; ///< has been asked to tell it from its event loop
};

/// Spans the delivery of a job's finished(): emptiness of the queue, which may be null, is told after it.
class DeliveryScope
{
public:
    explicit DeliveryScope(std::shared_ptr<QueueRecord> queue);
    ~DeliveryScope();
    DeliveryScope(const DeliveryScope&) = delete;
    DeliveryScope& operator=(const DeliveryScope&) = delete;

private:
    const std::shared_ptr<QueueRecord> m_queue;
};

} // namespace znJobs
