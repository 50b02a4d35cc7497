#include "standalone/znJobProcessing/Dependence.h"

#include <algorithm>

namespace znJobs
{

bool workFor(JobRecord& worker, JobRecord& other)
{
    if (worker.run != RunState::Idle) {
        return false;
    }
    for (std::shared_ptr<JobRecord> job = other.shared_from_this(); job; job = job->worksFor.lock()) {
        if (job.get() == &worker) {
            return false;
        }
    }
    stopWorking(worker);
    worker.aborted = false;
    worker.worksFor = other.weak_from_this();
    other.workers.push_back(worker.weak_from_this());
    return true;
}

void stopWorking(JobRecord& worker)
{
    if (const std::shared_ptr<JobRecord> other = worker.worksFor.lock()) {
        std::erase_if(other->workers, [&worker](const std::weak_ptr<JobRecord>& entry) {
            return entry.expired() || entry.lock().get() == &worker;
        });
    }
    worker.worksFor.reset();
}

std::vector<std::shared_ptr<JobRecord>> workersOf(const JobRecord& job)
{
    std::vector<std::shared_ptr<JobRecord>> found;
    for (const std::weak_ptr<JobRecord>& entry : job.workers) {
        if (const std::shared_ptr<JobRecord> worker = entry.lock(); worker && worker->run != RunState::Idle) {
            found.push_back(worker);
        }
    }
    return found;
}

bool inheritsAbort(const JobRecord& job)
{
    const std::shared_ptr<JobRecord> other = job.worksFor.lock();
    return (other && other->aborted) ||
           std::any_of(job.workers.begin(), job.workers.end(), [](const std::weak_ptr<JobRecord>& entry) {
               const std::shared_ptr<JobRecord> worker = entry.lock();
               return worker && worker->aborted;
           });
}

} // namespace znJobs
