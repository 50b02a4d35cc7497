#include "importer/TreeOptimization.h"

#include "host/znJobProcessing/znJobQueue.h"
#include "importer/TreeStepRecorder.h"
#include "optimization/znPtxTreeOptimizationJob.h"

#include <utility>

namespace importer
{

void TreeOptimization::start(znJobQueue& queue, const QString& file, const osg::NodePtr& tree, bool recordsSteps)
{
    m_file = file;
    auto* const job = new znPtxTreeOptimizationJob(file, tree, osg::NodePtr());
    job->setParent(&queue);
    if (recordsSteps)
        job->setStepListener(TreeStepRecorder(tree, m_steps));
    connect(job, &znAbstractJob::started, this, [this] { Q_EMIT progressChanged(0, tr("Optimising")); });
    connect(job, &znAbstractJob::finished, this, [this, job] {
        m_hasSucceeded = job->getState() == znCADFileTypes::JobSucceeded;
        m_error = job->getErrorText();
        Q_EMIT ended();
    });
    queue.addJob(job);
}

void TreeOptimization::tellOutcome(zn::ImportResult& result)
{
    result.steps = std::exchange(m_steps, {});
    if (m_hasSucceeded)
        return;
    result.error = m_file + QStringLiteral(": ") +
                   (m_error.isEmpty() ? tr("the tree could not be brought into the scene") : m_error);
    // What an exception left in the scene is there.
    result.state = result.node->getParent() ? znCADFileTypes::JobPartial : znCADFileTypes::JobFailed;
    if (!result.node->getParent())
        result.node = osg::NodePtr();
}

} // namespace importer
