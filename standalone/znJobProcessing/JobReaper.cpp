#include "standalone/znJobProcessing/JobReaper.h"

#include "standalone/znJobProcessing/ApplicationOwned.h"
#include "standalone/znJobProcessing/JobRecord.h"

#include <QCoreApplication>
#include <QEvent>

#include <utility>
#include <vector>

namespace znJobs
{

namespace
{

/// Of the whole process: what one reaper did not come to is left to the next.
std::vector<std::shared_ptr<JobRecord>>& condemnedJobs()
{
    static std::vector<std::shared_ptr<JobRecord>> jobs;
    return jobs;
}

} // namespace

JobReaper& JobReaper::instance()
{
    return applicationOwned<JobReaper>();
}

JobReaper::JobReaper()
{
    post();
}

void JobReaper::post()
{
    if (!std::exchange(m_posted, true)) {
        QCoreApplication::postEvent(this, new QEvent(QEvent::User));
    }
}

void JobReaper::condemn(const std::shared_ptr<JobRecord>& record)
{
    condemnedJobs().push_back(record);
    post();
}

void JobReaper::take(const std::shared_ptr<JobRecord>& record)
{
    const std::shared_ptr<JobRecord> self = record;
    self->condemned = self->busy > 0;
    if (!self->condemned) {
        delete self->job;
    }
}

void JobReaper::customEvent(QEvent*)
{
    m_posted = false;
    for (const std::shared_ptr<JobRecord>& record : std::exchange(condemnedJobs(), {})) {
        take(record);
    }
}

} // namespace znJobs
