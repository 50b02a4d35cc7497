#pragma once

#include "host/HostExport.h"

#include <QObject>

#include <memory>

class znAbstractJob;

namespace znJobs
{
class QueueRecord;
}

/// Runs jobs in the order in which they were added, from the event loop.
///
/// All queues of a host share its means: at most znParallelJobManager::getMaxNumProcesses() process jobs that queues
/// started run at a time, and one processing job. Waiting jobs of one kind do not hold up those of the other.
///
/// A queue is idle until startProcessing(). No job starts inside addJob() or startProcessing().
///
/// A queue that is destroyed emits nothing. Jobs that are its children die with it. Of the others, running ones are
/// asked to abort and end on their own; waiting ones are let go, and if the queue deletes ended jobs, those without a
/// parent are deleted.
class ZN_HOST_EXPORT znJobQueue : public QObject
{
    Q_OBJECT

public:
    /// A new queue, idle and empty. With a null `parent` it belongs to whoever makes it.
    explicit znJobQueue(QObject* parent = nullptr);
    ~znJobQueue() override;

    /// Appends `job`. A null job and one that is in a queue already are refused with a warning. An ended job may be
    /// added again, from a slot on its finished() on, unless the queue in which it ended deletes it.
    void addJob(znAbstractJob* job);

    /// Lets waiting jobs and those added later start.
    void startProcessing();

    /// Lets no further job start; running ones go on.
    void stopProcessing();

    /// Ends the jobs that wait, with finished(JobFailed) each before this returns, and the processing jobs whose work
    /// has not begun; then calls abort() on those that run. Jobs that a slot adds meanwhile stay.
    void abortAllJobs();

    /// Whether the queue owns its jobs from the moment they end, however they ended, and deletes them as
    /// znAbstractJob tells. Off at first.
    void setDeleteFinishedOrFailedJobs(bool deleteJobs);

Q_SIGNALS:
    /// The queue had jobs and now has none that waits or runs. Comes from the event loop, after the last finished() was
    /// delivered, however the jobs ended or went; not if jobs were added in the meantime.
    void jobQueueEmpty();

protected:
    /// The host's own; never null.
    const std::shared_ptr<znJobs::QueueRecord> m_record;
};
