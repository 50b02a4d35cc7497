#include "importer/TreeFinish.h"

#include "host/znJobProcessing/znJobQueue.h"
#include "importer/StepRecorder.h"
#include "optimization/znPtxTreeOptimizationJob.h"

namespace
{

void ended(const znPtxTreeOptimizationJob& job, const QString& file, znImportResult& result)
{
    if (job.getState() == znCADFileTypes::JobSucceeded)
        return;
    const QString reason = job.getErrorText();
    result.error = file + QStringLiteral(": ") +
                   (reason.isEmpty() ? TreeFinish::tr("the tree could not be brought into the scene") : reason);
    // What an exception left in the scene is there.
    result.state = result.node->getParent() ? znCADFileTypes::JobPartial : znCADFileTypes::JobFailed;
    if (!result.node->getParent())
        result.node = osg::NodePtr();
}

} // namespace

void TreeFinish::start(znJobQueue& queue, const QString& file, znImportResult& result)
{
    auto* const job = new znPtxTreeOptimizationJob(file, result.node, osg::NodePtr());
    job->setParent(&queue);
    if (result.recordsSteps)
        job->setStepListener(StepRecorder(result.node, result.steps));
    connect(job, &znAbstractJob::started, this, [this] { Q_EMIT progressChanged(0, tr("Optimising")); });
    connect(job, &znAbstractJob::finished, this, [job, file, &result] { ended(*job, file, result); });
    queue.addJob(job);
}
