#include "host/znJobProcessing/znAbstractJob.h"

#include "standalone/znJobProcessing/JobRecord.h"
#include "standalone/znJobProcessing/ProcessRun.h"
#include "standalone/znJobProcessing/QueueRecord.h"

using znJobs::JobPhase;

znAbstractJob::znAbstractJob(QObject* parent) : QObject(parent), m_record(std::make_shared<znJobs::JobRecord>(*this))
{
    // Queued slots and signal spies look the type up by this name.
    static const int type = qRegisterMetaType<znCADFileTypes::JobState>("znCADFileTypes::JobState");
    Q_UNUSED(type)
}

znAbstractJob::~znAbstractJob()
{
    m_record->destroyed();
}

void znAbstractJob::abort()
{
    if (m_record->phase == JobPhase::Waiting) {
        m_record->queue->takeFromWaiting(*m_record, JobPhase::Ending);
        m_record->endWithoutRun();
    } else if (m_record->delay && m_record->delay->isActive()) {
        m_record->delay->stop();
        m_record->endWithoutRun();
    }
}

bool znAbstractJob::isMechanorJob() const
{
    return false;
}

void znAbstractJob::finish()
{
    const std::shared_ptr<znJobs::JobRecord> record = m_record;
    {
        const znJobs::BusyScope busy(*this);
        const znJobs::FinishScope nobodysWork(nullptr);
        Q_EMIT finished(m_state);
    }
    record->ended();
}
