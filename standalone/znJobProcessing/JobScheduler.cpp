#include "standalone/znJobProcessing/JobScheduler.h"

#include "standalone/znJobProcessing/ApplicationOwned.h"
#include "standalone/znJobProcessing/ProcessLimit.h"

#include <QCoreApplication>
#include <QEvent>

#include <algorithm>
#include <tuple>

namespace znJobs
{

namespace
{

/// Those of the whole process: a queue may outlive the application object it was made under.
std::vector<std::shared_ptr<QueueRecord>>& queues()
{
    static std::vector<std::shared_ptr<QueueRecord>> all;
    return all;
}

} // namespace

JobScheduler& JobScheduler::instance()
{
    return applicationOwned<JobScheduler>();
}

JobScheduler::JobScheduler()
{
    postDispatch();
}

void JobScheduler::enlist(const std::shared_ptr<QueueRecord>& queue)
{
    queues().push_back(queue);
}

void JobScheduler::dismiss(const std::shared_ptr<QueueRecord>& queue)
{
    std::erase(queues(), queue);
}

void JobScheduler::postDispatch()
{
    if (!m_dispatchPosted) {
        m_dispatchPosted = true;
        QCoreApplication::postEvent(this, new QEvent(QEvent::User));
    }
}

void JobScheduler::customEvent(QEvent*)
{
    m_dispatchPosted = false;
    dispatch(JobKind::Process);
    dispatch(JobKind::Processing);
}

void JobScheduler::release(JobRecord& job)
{
    if (JobScheduler* const owner = job.slotOwner) {
        job.slotOwner.clear();
        --owner->placesFor(job.kind);
        owner->postDispatch();
    }
}

std::vector<JobScheduler::Candidate> JobScheduler::candidates(JobKind kind) const
{
    std::vector<Candidate> found;
    for (const std::shared_ptr<QueueRecord>& queue : queues()) {
        for (auto& [key, jobs] : queue->waiting) {
            if (queue->active && key.first == kind) {
                found.push_back({queue.get(), key.second, &jobs});
            }
        }
    }
    return found;
}

std::shared_ptr<JobRecord> JobScheduler::takeNext(JobKind kind)
{
    const std::vector<Candidate> all = candidates(kind);
    if (all.empty()) {
        return nullptr;
    }
    const auto starvingAt = static_cast<unsigned>(4 * all.size());
    const auto later = [starvingAt](const Candidate& left, const Candidate& right) {
        const auto rank = [starvingAt](const Candidate& candidate) {
            const bool starving = candidate.jobs->overtaken >= starvingAt;
            return std::tuple(starving, starving ? 0 : candidate.priority, candidate.jobs->overtaken);
        };
        // An earlier ticket goes first.
        return std::tuple(rank(left), right.jobs->jobs.begin()->first) <
               std::tuple(rank(right), left.jobs->jobs.begin()->first);
    };
    const Candidate next = *std::max_element(all.begin(), all.end(), later);
    for (const Candidate& candidate : all) {
        ++candidate.jobs->overtaken;
    }
    next.jobs->overtaken = 0;
    std::shared_ptr<JobRecord> job = next.jobs->jobs.begin()->second;
    next.queue->takeFromWaiting(*job, JobPhase::Started);
    return job;
}

bool JobScheduler::hasSlot(JobKind kind) const
{
    if (kind == JobKind::Process) {
        return m_processes < processLimit();
    }
    return m_processingJobs == 0 && m_processingDepth == 0;
}

void JobScheduler::dispatch(JobKind kind)
{
    while (hasSlot(kind)) {
        const std::shared_ptr<JobRecord> next = takeNext(kind);
        if (!next) {
            return;
        }
        next->slotOwner = this;
        ++placesFor(kind);
        next->job->run();
    }
}

JobScheduler::ProcessingScope::ProcessingScope() : m_scheduler(&instance())
{
    ++m_scheduler->m_processingDepth;
}

JobScheduler::ProcessingScope::~ProcessingScope()
{
    if (m_scheduler && --m_scheduler->m_processingDepth == 0) {
        m_scheduler->postDispatch();
    }
}

} // namespace znJobs
