#pragma once

#include "host/znJobProcessing/znJobQueue.h"
#include "import/filetypes/znCADFileTypes.h"

/// A queue whose jobs have priorities.
///
/// The job of the highest priority starts first, over all queues of the host; the jobs of a plain znJobQueue have
/// LowPriority. Jobs of one queue and priority start in the order in which they were added, and queues take turns.
/// Lower priorities are not kept waiting for ever: now and then one of theirs goes first.
class ZN_HOST_EXPORT znManagedJobQueue : public znJobQueue
{
    Q_OBJECT

public:
    /// A new queue, idle and empty, whose default priority is LowPriority.
    explicit znManagedJobQueue(QObject* parent);
    ~znManagedJobQueue() override;

    /// The priority of the jobs that are added from now on without one; LowPriority at first.
    void setDefaultPriority(znCADFileTypes::znJobPriority priority);

    using znJobQueue::addJob;
    /// As znJobQueue::addJob(), with a priority of its own, which it keeps until it starts.
    void addJob(znAbstractJob* job, znCADFileTypes::znJobPriority priority);
};
