#include "host/znJobProcessing/znJobQueue.h"

#include "standalone/znJobProcessing/JobScheduler.h"
#include "standalone/znJobProcessing/QueueRecord.h"

using znJobs::JobScheduler;

znJobQueue::znJobQueue(QObject* parent) : QObject(parent), m_record(std::make_shared<znJobs::QueueRecord>(*this))
{
    JobScheduler::instance().enlist(m_record);
}

znJobQueue::~znJobQueue()
{
    JobScheduler::instance().dismiss(m_record);
    m_record->dissolve();
}

void znJobQueue::addJob(znAbstractJob* job)
{
    m_record->add(job, m_record->defaultPriority);
}

void znJobQueue::startProcessing()
{
    m_record->active = true;
    JobScheduler::instance().postDispatch();
}

void znJobQueue::stopProcessing()
{
    m_record->active = false;
}

void znJobQueue::abortAllJobs()
{
    m_record->abortAll();
}

void znJobQueue::setDeleteFinishedOrFailedJobs(bool deleteJobs)
{
    m_record->deletesEnded = deleteJobs;
}
