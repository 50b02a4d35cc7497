#include "importer/NativeRoad.h"

#include "host/znKernel/znScenegraph.h"
#include "host/znKernel/znTypeConverter.h"
#include "import/znFileLoaderJob.h"
#include "importer/MeshTreeOptimization.h"
#include "importer/TreeStepRecorder.h"
#include "standalone/startup/StandaloneSession.h"

#include <QFileInfo>

#include <new>

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
        if (m_result.node && source() == Source::MeshFile)
            optimize();
    });
    connect(&m_queue, &znJobQueue::jobQueueEmpty, this, &ImportRoad::ended);
    m_queue.setDeleteFinishedOrFailedJobs(true);
    m_queue.addJob(job);
    m_queue.startProcessing();
}

Source NativeRoad::source() const
{
    const bool isSceneFile = QFileInfo(request().file).suffix().compare(QLatin1String("osb"), Qt::CaseInsensitive) == 0;
    return isSceneFile ? Source::SceneFile : Source::MeshFile;
}

void NativeRoad::optimize()
{
    Q_EMIT progressChanged(0, tr("Optimising"));
    TreeStepRecorder recorder(m_result.node, m_result.steps);
    const auto beginStep = [&](const char* step) {
        if (request().recordsSteps)
            recorder(step);
    };
    try {
        optimizeMeshTree(zn::StandaloneSession::require(), m_result.node, beginStep);
    } catch (const std::bad_alloc&) {
        m_result.state = znCADFileTypes::JobPartial;
        m_result.error = tr("%1: there is not enough memory to put its tree in order").arg(request().file);
    }
}

void NativeRoad::abortJobs()
{
    m_queue.abortAllJobs();
}

} // namespace importer
