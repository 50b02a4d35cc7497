#include "host/znJobProcessing/znAbstractJob.h"

#include "standalone/znJobProcessing/JobRecord.h"

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
    m_record->abort();
}

bool znAbstractJob::isMechanorJob() const
{
    return false;
}

void znAbstractJob::finish()
{
    m_record->announceEnd();
}
