#include "importer/ConvertedRoad.h"

#include "converter/znPtxConverterJob.h"
#include "host/OSGSystem/Edit.h"
#include "host/znJobProcessing/znOsbLoaderJob.h"
#include "host/znKernel/znScenegraph.h"

#include <QFile>

ConvertedRoad::ConvertedRoad(const QString& file) : m_file(file)
{
    m_queue.setDeleteFinishedOrFailedJobs(true);
    connect(&m_queue, &znJobQueue::jobQueueEmpty, this, &ConvertedRoad::queueEmpty);
}

void ConvertedRoad::start(znImportResult& result)
{
    m_result = &result;
    m_converter = new znPtxConverterJob(m_file, QString(), &m_queue);
    m_converter->setConvertEntireAssembly(true);
    connect(m_converter, &znAbstractJob::started, this, [this] { Q_EMIT progressChanged(0, tr("Starting")); });
    connect(m_converter, &znAbstractJob::progressChanged, this, &ImportRoad::progressChanged);
    connect(m_converter, &znPtxConverterJob::outputFileReady, this, &ConvertedRoad::converted);
    connect(m_converter, &znAbstractJob::finished, this, &ConvertedRoad::conversionEnded);
    m_queue.addJob(m_converter);
    m_queue.startProcessing();
}

void ConvertedRoad::cancel()
{
    m_queue.abortAllJobs();
}

void ConvertedRoad::converted(const QString& file)
{
    m_convertedFile = file;
}

void ConvertedRoad::conversionEnded(znCADFileTypes::JobState state)
{
    m_result->state = state;
    if (state == znCADFileTypes::JobSucceeded && m_convertedFile.isEmpty())
        m_result->state = znCADFileTypes::JobFailed;
    if (m_result->state == znCADFileTypes::JobFailed) {
        const QString reason = m_converter->getErrorText();
        m_result->error = m_file + QStringLiteral(": ") + (reason.isEmpty() ? tr("the conversion failed") : reason);
        return;
    }
    auto* job = new znOsbLoaderJob(m_convertedFile);
    job->setParent(&m_queue);
    connect(job, &znAbstractJob::started, this, [this] { Q_EMIT progressChanged(0, tr("Loading")); });
    connect(job, &znAbstractJob::finished, this, [this, job](znCADFileTypes::JobState end) { loaded(job, end); });
    m_queue.addJob(job);
}

void ConvertedRoad::loaded(znOsbLoaderJob* job, znCADFileTypes::JobState state)
{
    m_result->state = state;
    m_result->node = job->getLoadedNode();
    m_result->error = job->getErrorText();
    if (!m_result->node)
        return;
    const osg::NodePtr root = znScenegraph::getRoot();
    osg::beginEditCP(root, osg::Node::ChildrenFieldMask, 1);
    root->addChild(m_result->node);
    osg::endEditCP(root, osg::Node::ChildrenFieldMask, 1);
}

/// The scene stands on the mapped file, which may be unlinked.
void ConvertedRoad::queueEmpty()
{
    if (!m_convertedFile.isEmpty())
        QFile::remove(m_convertedFile);
    Q_EMIT ended();
}
