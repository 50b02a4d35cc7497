#include "importer/PlmxmlRoad.h"

#include "converter/znPtxConverterJob.h"
#include "host/znKernel/znImportOptions.h"
#include "importer/DocumentFault.h"
#include "importer/DocumentMaterials.h"
#include "importer/MissingParts.h"
#include "importer/NestedDocuments.h"
#include "importer/PartImports.h"
#include "importer/PreparedDocument.h"
#include "importer/RepeatedParts.h"
#include "plmxml/znPLMXMLLoaderJob.h"
#include "standalone/loading/ReferenceCheck.h"
#include "standalone/startup/StandaloneSession.h"

#include <QFileInfo>

#include <algorithm>
#include <new>
#include <utility>

namespace importer
{

namespace
{

/// The last line of the log, without the name of `file` before it.
QString lastReason(const QStringList& log, const QString& file)
{
    const QString line = log.isEmpty() ? QString() : log.last();
    const QString name = file + QStringLiteral(": ");
    return line.startsWith(name) ? line.mid(name.size()) : line;
}

} // namespace

PlmxmlRoad::PlmxmlRoad(const zn::ImportRequest& request)
    : ImportRoad(request), m_file(QFileInfo(request.file).absoluteFilePath())
{
    m_queue.setDeleteFinishedOrFailedJobs(true);
    connect(&m_queue, &znJobQueue::jobQueueEmpty, this, &ImportRoad::ended);
    connect(&m_optimization, &TreeOptimization::progressChanged, this, &ImportRoad::progressChanged);
    connect(&m_optimization, &TreeOptimization::ended, this, [this] { m_optimization.tellOutcome(m_result); });
}

PlmxmlRoad::~PlmxmlRoad() = default;

/// The reading runs the event loop, which is that of the caller by then.
void PlmxmlRoad::start()
{
    QMetaObject::invokeMethod(this, &PlmxmlRoad::read, Qt::QueuedConnection);
}

void PlmxmlRoad::read()
{
    const plmxml::NormaliserOptions how = options(request().wantsStructure);
    files::Expected<ReadDocument> outcome = PreparedDocument::read(m_file, how);
    m_document = std::make_unique<PreparedDocument>(m_file, std::move(outcome), how.rules, m_elements);
    if (prepare())
        load();
}

void PlmxmlRoad::load()
{
    auto* const job = new znPLMXMLLoaderJob(m_document->path().toStdString(), &m_queue);
    job->setParent(&m_queue);
    auto* const parts = new PartImports(*job);
    connect(job, &znAbstractJob::started, this, [this] { Q_EMIT progressChanged(0, tr("Reading document")); });
    connect(parts, &PartImports::changed, this, [this, parts] { Q_EMIT partsChanged(parts->counts(), parts->text()); });
    connect(job, &znAbstractJob::finished, this, [this, job, parts] { jobEnded(*job, *parts); });
    follow(*job);
    m_nested = std::make_unique<NestedDocuments>(zn::StandaloneSession::require(), m_file, options(false), m_elements,
                                                 m_repeatedNodesLeft);
    connect(m_nested.get(), &NestedDocuments::jobCreated, parts, [this, parts](znPLMXMLLoaderJob* nested) {
        parts->followNested(*nested);
        follow(*nested);
    });
    connect(m_nested.get(), &NestedDocuments::remarked, this, [this](const QString& remark) { addMessage(remark); });
    m_queue.addJob(job);
    m_queue.startProcessing();
}

/// False when there is nothing to import, or nobody wants it any more, which ends the road.
bool PlmxmlRoad::prepare()
{
    m_result.document = m_document->facts();
    if (m_result.cancelled || m_document->refusal()) {
        endWithout(m_document->refusal().value_or(QString()));
        return false;
    }
    for (const QString& remark : m_document->remarks())
        addMessage(remark);
    if (request().keepNormalised.isEmpty())
        return true;
    const auto error = m_document->keep(request().keepNormalised);
    if (error)
        endWithout(*error);
    return !error;
}

plmxml::NormaliserOptions PlmxmlRoad::options(bool wantsFacts)
{
    constexpr std::size_t placesOfMegabyte = 1024; // a place takes about 1 KB with its record and its node
    const std::size_t megabytes = zn::StandaloneSession::require().settings().read.memory.value();
    const std::size_t mostPlaces = std::min(plmxml::PlaceWalk::MaxPlaces, megabytes * placesOfMegabyte);
    return {request().preferredFormats,
            zn::loading::documentRules(zn::StandaloneSession::require()),
            wantsFacts,
            m_elements.folder(),
            {},
            mostPlaces};
}

void PlmxmlRoad::endWithout(const QString& reason)
{
    m_result.state = znCADFileTypes::JobFailed;
    if (!m_result.cancelled)
        m_result.error = m_file + QStringLiteral(": ") + reason;
    QMetaObject::invokeMethod(this, &ImportRoad::ended, Qt::QueuedConnection);
}

void PlmxmlRoad::abortJobs()
{
    for (const QPointer<znPtxConverterJob>& conversion : m_conversions)
        if (conversion)
            conversion->abort();
    m_queue.abortAllJobs();
}

void PlmxmlRoad::follow(znPLMXMLLoaderJob& job)
{
    connect(&job, &znPLMXMLLoaderJob::foundChildFile, this, [this] { ++m_found; });
    connect(&job, &znPLMXMLLoaderJob::childPtxConverterJobCreated, this, &PlmxmlRoad::followConversion);
    connect(&job, &znPLMXMLLoaderJob::loadingChildFileStarted, this, &PlmxmlRoad::directPartBegins);
    connect(&job, &znPLMXMLLoaderJob::loadingChildFileFinished, this, &PlmxmlRoad::directPartEnded);
}

void PlmxmlRoad::followConversion(znPtxConverterJob* conversion)
{
    m_conversions.append(conversion);
    connect(conversion, &znAbstractJob::starting, this, &PlmxmlRoad::tellFoundParts);
    connect(conversion, &znAbstractJob::started, this, [this, conversion] { abortUnwanted(*conversion); });
}

/// One that begins after the cancel ends at once. The text that names the part files may come from another process,
/// which is not trusted to keep to what may be read.
void PlmxmlRoad::abortUnwanted(znPtxConverterJob& conversion)
{
    const QString file = conversion.getInputFile();
    const auto refusal = zn::loading::refusalOfDocument(zn::StandaloneSession::require(), file);
    if (refusal)
        addMessage(file + QStringLiteral(": ") + files::textOf(*refusal));
    if (refusal || m_result.cancelled)
        conversion.abort();
}

/// Once all of a document are found, which is when work on the first begins.
void PlmxmlRoad::tellFoundParts()
{
    if (std::exchange(m_told, m_found) != m_found)
        Q_EMIT progressChanged(0, tr("Part files found: %1").arg(m_found));
}

void PlmxmlRoad::directPartBegins(const QString& file)
{
    tellFoundParts();
    Q_EMIT progressChanged(0, tr("Loading %1").arg(QFileInfo(file).fileName()));
}

void PlmxmlRoad::directPartEnded(const QString& file, znCADFileTypes::JobState state)
{
    if (state != znCADFileTypes::JobSucceeded)
        m_failedLoads.push_back({file, lastReason(m_result.messages, file), {}});
}

/// The end of a job whose document is missing comes twice.
void PlmxmlRoad::jobEnded(znPLMXMLLoaderJob& job, const PartImports& parts)
{
    if (std::exchange(m_ended, true))
        return;
    m_nested.reset();
    try {
        complete(job, parts);
    } catch (const std::bad_alloc&) {
        m_result.state = znCADFileTypes::JobFailed;
        m_result.node = osg::NodePtr();
        m_result.error = tr("%1: there is not enough memory").arg(m_file);
    }
}

void PlmxmlRoad::complete(znPLMXMLLoaderJob& job, const PartImports& parts)
{
    m_result.state = job.getState();
    m_result.node = job.getLoadedNode();
    m_document->complete(job.getLoadedNode());
    for (QString& line : m_result.messages)
        line = m_elements.aboutElements(m_document->aboutOriginal(line));
    if (m_result.node && m_result.state != znCADFileTypes::JobFailed)
        return loaded(parts);
    m_result.state = znCADFileTypes::JobFailed;
    m_result.node = osg::NodePtr();
    if (!m_result.cancelled)
        m_result.error = whyWithoutTree(job);
}

/// References that are not wanted are not missing.
void PlmxmlRoad::loaded(const PartImports& parts)
{
    const std::size_t emptyPlaces = fillRepeatedParts(m_result.node, m_repeatedNodesLeft);
    applyDocumentMaterials(m_document->path(), m_result.node);
    tellLeftOut();
    m_result.missing = zn::partsLeftOut(m_result.node);
    if (emptyPlaces > 0)
        m_result.missing.push_back(
            {m_file, tr("part files at %1 places would make too large a tree").arg(emptyPlaces), {}});
    if (znImportOptions("PLMXML", false, true).getImportReferencedFiles()) {
        m_failedLoads.insert(m_failedLoads.end(), parts.missing().begin(), parts.missing().end());
        const std::vector<zn::MissingPart> unread = zn::unreadParts(m_result.node, m_failedLoads);
        m_result.missing.insert(m_result.missing.begin(), unread.begin(), unread.end());
    }
    m_document->tellWhatWasAsked(m_result.missing);
    m_elements.tellElements(m_result.missing);
    m_elements.nameElements(m_result.node);
    if (!m_result.missing.empty())
        m_result.state = znCADFileTypes::JobPartial;
    m_optimization.start(m_queue, m_document->nameForJobs(), m_result.node, request().recordsSteps);
}

/// A document over the limits of the walk is told in the log.
QString PlmxmlRoad::whyWithoutTree(const znPLMXMLLoaderJob& job) const
{
    if (!job.getErrorText().isEmpty())
        return m_file + QStringLiteral(": ") + job.getErrorText();
    if (const auto fault = findDocumentFault(m_file))
        return describe(m_file, *fault);
    return m_result.messages.isEmpty() ? tr("%1: the document gave no tree").arg(m_file) : m_result.messages.last();
}

} // namespace importer
