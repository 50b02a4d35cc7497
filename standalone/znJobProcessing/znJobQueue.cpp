#include "host/znJobProcessing/znJobQueue.h"

#include "standalone/znJobProcessing/JobScheduler.h"
#include "standalone/znJobProcessing/QueueRecord.h"
#include "standalone/znUtils/CallTrace.h"

using znJobs::JobScheduler;

znJobQueue::znJobQueue(QObject* parent) : QObject(parent), m_record(std::make_shared<znJobs::QueueRecord>(*this))
{
    JobScheduler::enlist(m_record);
}

znJobQueue::~znJobQueue()
{
    JobScheduler::dismiss(m_record);
    m_record->dissolve();
}

void znJobQueue::addJob(znAbstractJob* job)
{
    const zn::TracedCall call("znJobQueue::addJob", job ? job->metaObject()->className() : nullptr);
    m_record->add(job, m_record->defaultPriority);
}

void znJobQueue::startProcessing()
{
    const zn::TracedCall call("znJobQueue::startProcessing");
    m_record->active = true;
    JobScheduler::instance().postDispatch();
}

void znJobQueue::stopProcessing()
{
    const zn::TracedCall call("znJobQueue::stopProcessing");
    m_record->active = false;
}

void znJobQueue::abortAllJobs()
{
    const zn::TracedCall call("znJobQueue::abortAllJobs");
    m_record->abortAll();
}

void znJobQueue::setDeleteFinishedOrFailedJobs(bool deleteJobs)
{
    const zn::TracedCall call("znJobQueue::setDeleteFinishedOrFailedJobs", deleteJobs);
    m_record->deletesEnded = deleteJobs;
}
