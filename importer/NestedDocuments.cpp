#include "importer/NestedDocuments.h"

#include "files/ReadTask.h"
#include "host/znKernel/znController.h"
#include "host/znKernel/znTexSearch.h"
#include "importer/DocumentFault.h"
#include "importer/DocumentMaterials.h"
#include "importer/ElementDocuments.h"
#include "importer/PreparedDocument.h"
#include "importer/RepeatedParts.h"
#include "plmxml/znPLMXMLLoaderJob.h"
#include "standalone/startup/StandaloneSession.h"

#include <QEventLoop>
#include <QFileInfo>

namespace importer
{

namespace
{

QString canonical(const QString& file)
{
    return QFileInfo(file).canonicalFilePath();
}

void runToItsEnd(znPLMXMLLoaderJob& job)
{
    QEventLoop loop;
    QObject::connect(&job, &znAbstractJob::finished, &loop, &QEventLoop::quit);
    job.run();
    loop.exec();
}

[[noreturn]] void failWithoutTree(const files::ReadTask& task, const znPLMXMLLoaderJob& job)
{
    using files::ErrorCode;
    if (!job.getErrorText().isEmpty())
        task.fail(ErrorCode::Damaged, job.getErrorText());
    const auto fault = findDocumentFault(task.path());
    if (!fault)
        task.fail(ErrorCode::Damaged, NestedDocuments::tr("the document gave no tree"));
    const QString place = NestedDocuments::tr("line %1, column %2").arg(fault->line).arg(fault->column);
    task.fail(ErrorCode::Damaged, fault->reason, fault->line > 0 ? place : QString());
}

} // namespace

NestedDocuments::NestedDocuments(zn::StandaloneSession& session, const QString& outermost,
                                 plmxml::NormaliserOptions options, ElementDocuments& elements, std::size_t& nodesLeft)
    : m_session(session), m_readersBefore(session.state<files::SceneReaders>()), m_open{{canonical(outermost), {}}},
      m_options(std::move(options)), m_elements(elements), m_nodesLeft(nodesLeft)
{
    session.state<files::SceneReaders>().add({QStringLiteral("PLMXML"),
                                              {QStringLiteral("plmxml"), QStringLiteral("xml")},
                                              [this](files::ReadTask& task) { return read(task); }});
}

NestedDocuments::~NestedDocuments()
{
    m_session.state<files::SceneReaders>() = m_readersBefore;
}

/// The outer document is the current one again afterwards, and at work.
osg::NodePtr NestedDocuments::read(files::ReadTask& task)
{
    const Open document = wantedBy(task);
    refuse(task, document);
    ++m_count;
    m_open.append(document);
    const auto close = [this] {
        m_open.removeLast();
        znTexSearch::setCurrentFile(m_open.last().file.toUtf8().constData());
        znController::setBusy(true, false);
    };
    try {
        const osg::NodePtr root = load(task, document);
        close();
        return root;
    } catch (...) {
        close();
        throw;
    }
}

/// The document that the task names, or the element that its file stands in for.
NestedDocuments::Open NestedDocuments::wantedBy(const files::ReadTask& task) const
{
    const std::optional<ElementDocuments::Element> element = m_elements.find(task.path());
    return element ? Open{canonical(element->document), element->id} : Open{canonical(task.path()), {}};
}

void NestedDocuments::refuse(const files::ReadTask& task, const Open& document) const
{
    using files::ErrorCode;
    if (document.file.isEmpty())
        task.fail(ErrorCode::NotFound, tr("there is no such file"));
    if (m_open.contains(document))
        task.fail(ErrorCode::Damaged, tr("the document leads back to itself"));
    if (m_open.size() >= maxDepth)
        task.fail(ErrorCode::LimitExceeded, tr("more than %1 documents are nested").arg(maxDepth));
    if (m_count >= maxCount)
        task.fail(ErrorCode::LimitExceeded, tr("the import has more than %1 documents").arg(maxCount));
}

osg::NodePtr NestedDocuments::load(const files::ReadTask& task, const Open& wanted)
{
    plmxml::NormaliserOptions options = m_options;
    options.root = wanted.id;
    const QString file = wanted.id.isEmpty() ? QFileInfo(task.path()).absoluteFilePath() : wanted.file;
    const PreparedDocument document(file, PreparedDocument::read(file, options), options.rules, m_elements);
    if (document.refusal())
        task.fail(files::ErrorCode::Damaged, *document.refusal());
    for (const QString& remark : document.remarks())
        Q_EMIT remarked(remark);
    znPLMXMLLoaderJob job(document.path().toStdString(), nullptr);
    Q_EMIT jobCreated(&job);
    runToItsEnd(job);
    const osg::NodePtr root = job.getLoadedNode();
    if (!root)
        failWithoutTree(task, job);
    document.complete(root);
    fillRepeatedParts(root, m_nodesLeft);
    applyDocumentMaterials(document.path(), root);
    return root;
}

} // namespace importer
