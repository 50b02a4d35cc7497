#include "standalone/znJobProcessing/JobReaper.h"

#include "standalone/znJobProcessing/JobRecord.h"

#include <QCoreApplication>
#include <QEvent>

#include <utility>

namespace znJobs
{

JobReaper& JobReaper::instance()
{
    static JobReaper reaper;
    return reaper;
}

void JobReaper::condemn(const std::shared_ptr<JobRecord>& record)
{
    if (m_condemned.empty()) {
        QCoreApplication::postEvent(this, new QEvent(QEvent::User));
    }
    m_condemned.push_back(record);
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
    for (const std::shared_ptr<JobRecord>& record : std::exchange(m_condemned, {})) {
        take(record);
    }
}

} // namespace znJobs
