#include "standalone/znJobProcessing/QueueRecord.h"

#include "host/znJobProcessing/znJobQueue.h"
#include "standalone/znJobProcessing/JobScheduler.h"

#include <QtDebug>

namespace znJobs
{

namespace
{

std::uint64_t nextTicket()
{
    static std::uint64_t last = 0;
    return ++last;
}

} // namespace

void QueueRecord::add(znAbstractJob* job, int priority)
{
    if (!job || !JobRecord::of(*job)->leaveEnded()) {
        qWarning() << "A job queue was given" << (job ? "a job that is in a queue already" : "no job");
        return;
    }
    const std::shared_ptr<JobRecord>& record = JobRecord::of(*job);
    record->queue = shared_from_this();
    record->phase = JobPhase::Waiting;
    record->priority = priority;
    record->ticket = nextTicket();
    m_members.emplace(record->ticket, record);
    waiting[{record->kind, priority}].jobs.emplace(record->ticket, record);
    m_hadJobs = true;
    JobScheduler::instance().postDispatch();
}

void QueueRecord::takeFromWaiting(JobRecord& job, JobPhase next)
{
    const auto found = waiting.find({job.kind, job.priority});
    found->second.jobs.erase(job.ticket);
    if (found->second.jobs.empty()) {
        waiting.erase(found);
    }
    job.phase = next;
}

void QueueRecord::remove(JobRecord& job)
{
    const std::shared_ptr<QueueRecord> self = shared_from_this();
    if (job.phase == JobPhase::Waiting) {
        takeFromWaiting(job, JobPhase::Free);
    }
    job.phase = JobPhase::Free;
    job.queue.reset();
    m_members.erase(job.ticket);
    if (m_members.empty()) {
        postEmptiness();
    }
}

std::vector<std::shared_ptr<JobRecord>> QueueRecord::membersInPhase(JobPhase phase) const
{
    std::vector<std::shared_ptr<JobRecord>> found;
    for (const auto& [ticket, job] : m_members) {
        if (job->phase == phase) {
            found.push_back(job);
        }
    }
    return found;
}

void QueueRecord::abortAll()
{
    const std::shared_ptr<QueueRecord> self = shared_from_this();
    const auto unstarted = membersInPhase(JobPhase::Waiting);
    const auto started = membersInPhase(JobPhase::Started);
    for (const std::shared_ptr<JobRecord>& job : unstarted) {
        takeFromWaiting(*job, JobPhase::Ending);
    }
    for (const std::shared_ptr<JobRecord>& job : unstarted) {
        if (job->job && job->phase == JobPhase::Ending) {
            job->endWithoutRun();
        }
    }
    for (const std::shared_ptr<JobRecord>& job : started) {
        if (job->job && job->phase == JobPhase::Started) {
            job->stop();
        }
    }
}

void QueueRecord::dissolve()
{
    const QObject* const owner = queue;
    queue = nullptr;
    active = false;
    const JobList members = m_members;
    for (const auto& [ticket, job] : members) {
        if (job->job && job->queue && job->job->parent() != owner) {
            letGo(job);
        }
    }
}

void QueueRecord::letGo(const std::shared_ptr<JobRecord>& job)
{
    const bool started = job->phase == JobPhase::Started;
    remove(*job);
    if (started) {
        // From the event loop: slots on finished() may know the owner of this queue, which is dying as well.
        QMetaObject::invokeMethod(
            job->job, [job] { job->stop(); }, Qt::QueuedConnection);
    }
    if (started || job->busy > 0) {
        job->deletedWhenEnded = deletesEnded;
    } else if (deletesEnded && !job->job->parent()) {
        delete job->job;
    }
}

void QueueRecord::postEmptiness()
{
    if (queue && !m_emptinessPosted) {
        m_emptinessPosted = QCoreApplication::instance();
        QMetaObject::invokeMethod(
            queue, [this] { announceEmptiness(); }, Qt::QueuedConnection);
    }
}

void QueueRecord::announceEmptiness()
{
    m_emptinessPosted.clear();
    if (m_members.empty() && m_hadJobs && m_deliveries == 0) {
        m_hadJobs = false;
        Q_EMIT queue->jobQueueEmpty();
    }
}

DeliveryScope::DeliveryScope(std::shared_ptr<QueueRecord> queue) : m_queue(std::move(queue))
{
    if (m_queue) {
        ++m_queue->m_deliveries;
    }
}

DeliveryScope::~DeliveryScope()
{
    if (m_queue && --m_queue->m_deliveries == 0 && m_queue->m_members.empty()) {
        m_queue->postEmptiness();
    }
}

} // namespace znJobs
