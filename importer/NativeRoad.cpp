#include "importer/NativeRoad.h"

#include "host/znKernel/znScenegraph.h"
#include "host/znKernel/znTypeConverter.h"
#include "import/znFileLoaderJob.h"

namespace importer
{

void NativeRoad::start()
{
    auto* job = new znFileLoaderJob(request().file, znTypeConverter::convertNode(znScenegraph::getRoot()), &m_queue);
    job->setLoadBehavior(false); // the selection is the user's
    connect(job, &znAbstractJob::started, this, [this] { Q_EMIT progressChanged(0, tr("Loading")); });
    connect(job, &znAbstractJob::finished, this, [this, job](znCADFileTypes::JobState state) {
        m_result.state = state;
        m_result.node = job->getLoadedNode();
    });
    connect(&m_queue, &znJobQueue::jobQueueEmpty, this, &ImportRoad::ended);
    m_queue.setDeleteFinishedOrFailedJobs(true);
    m_queue.addJob(job);
    m_queue.startProcessing();
}

void NativeRoad::abortJobs()
{
    m_queue.abortAllJobs();
}

} // namespace importer
