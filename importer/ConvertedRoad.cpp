#include "importer/ConvertedRoad.h"

#include "importer/FailureReason.h"
#include "importer/MissingParts.h"
#include "importer/PartImports.h"
#include "loader/znPtxLoaderJob.h"

#include <QFile>
#include <QFileInfo>

namespace importer
{

/// Where a file refers to others its own place counts, so its path is a whole one.
ConvertedRoad::ConvertedRoad(const zn::ImportRequest& request)
    : ImportRoad(request), m_file(QFileInfo(request.file).absoluteFilePath())
{
    m_queue.setDeleteFinishedOrFailedJobs(true);
    connect(&m_conversions, &znJobQueue::jobQueueEmpty, this, [this] {
        if (!m_loads)
            queueEmpty();
    });
    connect(&m_queue, &znJobQueue::jobQueueEmpty, this, &ConvertedRoad::queueEmpty);
    connect(&m_optimization, &TreeOptimization::progressChanged, this, &ImportRoad::progressChanged);
    connect(&m_optimization, &TreeOptimization::ended, this, [this] { m_optimization.tellOutcome(m_result); });
}

void ConvertedRoad::start()
{
    m_converter = new znPtxConverterJob(m_file, QString(), &m_conversions);
    connect(m_converter, &znAbstractJob::started, this, [this] { Q_EMIT progressChanged(0, tr("Starting")); });
    connect(m_converter, &znAbstractJob::progressChanged, this, &ImportRoad::progressChanged);
    connect(m_converter, &znPtxConverterJob::outputFileReady, this, &ConvertedRoad::converted);
    connect(m_converter, &znAbstractJob::finished, this, &ConvertedRoad::conversionEnded);
    m_conversions.addJob(m_converter);
    m_conversions.startProcessing();
}

void ConvertedRoad::abortJobs()
{
    (m_loads ? m_queue : m_conversions).abortAllJobs();
}

void ConvertedRoad::converted(const QString& file)
{
    m_convertedFile = file;
}

void ConvertedRoad::conversionEnded(znCADFileTypes::JobState state)
{
    m_result.state = state;
    if (state == znCADFileTypes::JobSucceeded && m_convertedFile.isEmpty())
        m_result.state = znCADFileTypes::JobFailed;
    if (m_result.state == znCADFileTypes::JobFailed) {
        m_result.error = m_file + QStringLiteral(": ") + failureReason(*m_converter);
        return;
    }
    load();
}

void ConvertedRoad::load()
{
    m_loads = true;
    auto* const job = new znPtxLoaderJob(m_convertedFile, m_file);
    job->setParent(&m_queue);
    auto* const parts = new PartImports(*job);
    connect(job, &znAbstractJob::started, this, [this] { Q_EMIT progressChanged(0, tr("Loading")); });
    connect(parts, &PartImports::changed, this, [this, parts] { reportParts(*parts); });
    connect(job, &znAbstractJob::finished, this, [this, job, parts] { loaded(*job, *parts); });
    m_queue.addJob(job);
    m_queue.startProcessing();
}

void ConvertedRoad::reportParts(const PartImports& parts)
{
    Q_EMIT partsChanged(parts.counts(), parts.text());
}

void ConvertedRoad::loaded(znPtxLoaderJob& job, const PartImports& parts)
{
    m_result.state = job.getState();
    m_result.error = job.getErrorText();
    if (!m_result.error.isEmpty() && !m_result.error.contains(m_convertedFile))
        m_result.error = m_file + QStringLiteral(": ") + m_result.error;
    if (m_result.cancelled) {
        m_result.state = znCADFileTypes::JobFailed;
        return;
    }
    m_result.node = job.getLoadedNode();
    if (!m_result.node)
        return;
    tellLeftOut();
    m_result.missing = parts.missing();
    const std::vector<zn::MissingPart> leftOut = zn::partsLeftOut(m_result.node);
    m_result.missing.insert(m_result.missing.end(), leftOut.begin(), leftOut.end());
    if (!m_result.missing.empty())
        m_result.state = znCADFileTypes::JobPartial;
    m_optimization.start(m_queue, m_file, m_result.node, request().recordsSteps);
}

/// The scene stands on the mapped file, which may be unlinked.
void ConvertedRoad::queueEmpty()
{
    if (!m_convertedFile.isEmpty())
        QFile::remove(m_convertedFile);
    Q_EMIT ended();
}

} // namespace importer
