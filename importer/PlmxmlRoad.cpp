#include "importer/PlmxmlRoad.h"

#include "converter/znPtxConverterJob.h"
#include "importer/DocumentFault.h"
#include "importer/MissingParts.h"
#include "importer/PartImports.h"
#include "plmxml/znPLMXMLLoaderJob.h"

#include <QFileInfo>

PlmxmlRoad::PlmxmlRoad(const QString& file) : m_file(QFileInfo(file).absoluteFilePath())
{
    m_queue.setDeleteFinishedOrFailedJobs(true);
    connect(&m_queue, &znJobQueue::jobQueueEmpty, this, &ImportRoad::ended);
    connect(&m_finish, &TreeFinish::progressChanged, this, &ImportRoad::progressChanged);
}

void PlmxmlRoad::start(znImportResult& result)
{
    m_result = &result;
    auto* const job = new znPLMXMLLoaderJob(m_file.toStdString(), &m_queue);
    job->setParent(&m_queue);
    auto* const parts = new PartImports(*job);
    connect(job, &znAbstractJob::started, this, [this] { Q_EMIT progressChanged(0, tr("Reading document")); });
    connect(job, &znPLMXMLLoaderJob::childPtxConverterJobCreated, this, &PlmxmlRoad::followConversion);
    connect(job, &znPLMXMLLoaderJob::loadingChildFileStarted, this, [this](const QString& file) {
        Q_EMIT progressChanged(0, tr("Loading %1").arg(QFileInfo(file).fileName()));
    });
    connect(parts, &PartImports::changed, this, [this, parts] { Q_EMIT partsChanged(parts->counts(), parts->text()); });
    connect(job, &znAbstractJob::finished, this, [this, job, parts] { loaded(*job, *parts); });
    m_queue.addJob(job);
    m_queue.startProcessing();
}

void PlmxmlRoad::cancel()
{
    for (const QPointer<znPtxConverterJob>& conversion : m_conversions)
        if (conversion)
            conversion->abort();
    m_queue.abortAllJobs();
}

/// One that begins after the cancel ends at once.
void PlmxmlRoad::followConversion(znPtxConverterJob* conversion)
{
    m_conversions.append(conversion);
    connect(conversion, &znAbstractJob::started, this, [this, conversion] {
        if (m_result->cancelled)
            conversion->abort();
    });
}

/// A missing document is told twice.
void PlmxmlRoad::loaded(znPLMXMLLoaderJob& job, const PartImports& parts)
{
    if (std::exchange(m_loaded, true))
        return;
    m_result->state = job.getState();
    m_result->node = m_result->cancelled ? osg::NodePtr() : job.getLoadedNode();
    if (!m_result->node) {
        const osg::RefPtr<osg::NodePtr> unwanted(job.getLoadedNode());
        m_result->state = znCADFileTypes::JobFailed;
        m_result->error = describeDocumentFault(m_file);
        return;
    }
    m_result->missing = unreadParts(m_result->node, parts.missing());
    if (!m_result->missing.empty())
        m_result->state = znCADFileTypes::JobPartial;
    m_finish.start(m_queue, m_file, *m_result);
}
