// A queue that runs its jobs one after the other.
#include "JobRecord.h"

#include "host/znJobProcessing/znAbstractJob.h"
#include "host/znJobProcessing/znManagedJobQueue.h"

namespace
{

void startNext(znJobQueue* queue, znJobs::QueueRecord& record)
{
    if (!record.isOpen || record.running)
        return;
    while (!record.waiting.isEmpty() && !record.waiting.first())
        record.waiting.removeFirst();
    if (record.waiting.isEmpty()) {
        Q_EMIT queue->jobQueueEmpty();
        return;
    }
    record.running = record.waiting.takeFirst();
    record.running->run();
}

} // namespace

znJobQueue::znJobQueue(QObject* parent) : QObject(parent), m_record(std::make_shared<znJobs::QueueRecord>()) {}
znJobQueue::~znJobQueue() = default;

void znJobQueue::addJob(znAbstractJob* job)
{
    m_record->waiting.append(job);
    // Queued: what the job's other listeners do at its end comes first.
    connect(
        job, &znAbstractJob::finished, this,
        [this, job = QPointer<znAbstractJob>(job)] {
            if (!job || m_record->running != job)
                return;
            m_record->running = nullptr;
            if (m_record->deletesEnded)
                job->deleteLater();
            startNext(this, *m_record);
        },
        Qt::QueuedConnection);
}

void znJobQueue::startProcessing()
{
    m_record->isOpen = true;
    QMetaObject::invokeMethod(
        this, [this] { startNext(this, *m_record); }, Qt::QueuedConnection);
}

void znJobQueue::stopProcessing()
{
    m_record->isOpen = false;
}

void znJobQueue::abortAllJobs()
{
    m_record->waiting.clear();
    if (m_record->running)
        m_record->running->abort();
}

void znJobQueue::setDeleteFinishedOrFailedJobs(bool deleteJobs)
{
    m_record->deletesEnded = deleteJobs;
}

znManagedJobQueue::znManagedJobQueue(QObject* parent) : znJobQueue(parent) {}
znManagedJobQueue::~znManagedJobQueue() = default;

/// One job after the other needs no priorities.
void znManagedJobQueue::setDefaultPriority(znCADFileTypes::znJobPriority) {}
void znManagedJobQueue::addJob(znAbstractJob* job, znCADFileTypes::znJobPriority)
{
    znJobQueue::addJob(job);
}
