#include "standalone/znJobProcessing/JobRecord.h"

#include "standalone/znJobProcessing/JobReaper.h"
#include "standalone/znJobProcessing/JobScheduler.h"
#include "standalone/znJobProcessing/QueueRecord.h"

namespace znJobs
{

void JobRecord::endWithoutRun()
{
    job->m_state = znCADFileTypes::JobFailed;
    job->m_errorText = znAbstractJob::tr("Aborted");
    job->znAbstractJob::finish();
}

void JobRecord::ended()
{
    const std::shared_ptr<JobRecord> self = shared_from_this();
    bool deletes = deletedWhenEnded;
    if (queue) {
        deletes = deletes || queue->deletesEnded;
        queue->remove(*this);
    }
    if (deletes && job) {
        JobReaper::instance().condemn(self);
    }
    JobScheduler::instance().release(*this);
    JobScheduler::instance().startProcesses();
}

void JobRecord::destroyed()
{
    const std::shared_ptr<JobRecord> self = shared_from_this();
    job = nullptr;
    delay.reset();
    if (queue) {
        queue->remove(*this);
    }
    JobScheduler::instance().release(*this);
}

BusyScope::~BusyScope()
{
    if (--m_record->busy == 0 && m_record->condemned) {
        JobReaper::instance().condemn(m_record);
    }
}

} // namespace znJobs
