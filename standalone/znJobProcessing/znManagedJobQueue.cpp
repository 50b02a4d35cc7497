#include "host/znJobProcessing/znManagedJobQueue.h"

#include "standalone/znJobProcessing/QueueRecord.h"

znManagedJobQueue::znManagedJobQueue(QObject* parent) : znJobQueue(parent) {}

znManagedJobQueue::~znManagedJobQueue() = default;

void znManagedJobQueue::setDefaultPriority(znCADFileTypes::znJobPriority priority)
{
    m_record->defaultPriority = priority;
}

void znManagedJobQueue::addJob(znAbstractJob* job, znCADFileTypes::znJobPriority priority)
{
    m_record->add(job, priority);
}
