#include "host/znJobProcessing/znManagedJobQueue.h"

#include "standalone/znJobProcessing/QueueRecord.h"
#include "standalone/znUtils/CallTrace.h"

znManagedJobQueue::znManagedJobQueue(QObject* parent) : znJobQueue(parent) {}

znManagedJobQueue::~znManagedJobQueue() = default;

void znManagedJobQueue::setDefaultPriority(znCADFileTypes::znJobPriority priority)
{
    const zn::TracedCall call("znManagedJobQueue::setDefaultPriority", static_cast<int>(priority));
    m_record->defaultPriority = priority;
}

void znManagedJobQueue::addJob(znAbstractJob* job, znCADFileTypes::znJobPriority priority)
{
    m_record->add(job, priority);
}
