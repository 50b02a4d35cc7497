#include "plmxml/znPLMXMLLoaderJob.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Edit.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "host/znJobProcessing/znManagedJobQueue.h"
#include "host/znKernel/znController.h"
#include "host/znKernel/znFileIO.h"
#include "host/znKernel/znFileIOHelper.h"
#include "host/znKernel/znImportOptions.h"
#include "host/znKernel/znOSGWidget.h"
#include "host/znKernel/znPreferences.h"
#include "host/znKernel/znTexSearch.h"
#include "host/znOpenSGExt/ExtReference.h"
#include "host/znUtils/znFile.h"
#include "import/TreeEdits.h"
#include "import/TreeNotices.h"
#include "import/getFromMessage.h"
#include "loader/PartChildren.h"
#include "loader/RunEnd.h"
#include "plmxml/znPLMXMLLoader.h"

#include <chrono>

namespace
{

/// Puts a copy of `loaded` at the end of the children of `target`'s parent, in exchange for `target`. A listener may
/// have taken `target` out meanwhile; then there is no place to fill.
void replaceReference(const osg::NodePtr& target, const osg::NodePtr& loaded)
{
    const osg::NodePtr parent = target->getParent();
    if (!parent)
        return;
    const osg::RefPtr<osg::NodePtr> clone(osg::cloneTree(loaded, true));
    osg::beginEditCP(parent, osg::Node::ChildrenFieldMask, 1);
    parent->subChild(target);
    parent->addChild(clone);
    osg::endEditCP(parent, osg::Node::ChildrenFieldMask, 1);
    frame::markReferenceLoaded(clone);
}

/// Takes the level of the loaded file's own reference out.
void dissolveOwnReference(const osg::NodePtr& target, const osg::NodePtr& loaded)
{
    if (!loaded || !osg::fcCast<osg::ExtReference>(loaded->getCore()))
        return;
    osg::beginEditCP(target, osg::Node::ChildrenFieldMask, 1);
    while (loaded->getNChildren() > 0)
        target->addChild(loaded->getChild(0));
    target->subChild(loaded);
    osg::endEditCP(target, osg::Node::ChildrenFieldMask, 1);
}

bool loadInto(const QString& file, const osg::NodePtr& node)
{
    if (znFileIO::load({file}, node, false, false, false) != znFileIO::LoadedFully)
        return false;
    const std::vector<znFileIO::loadedS>& list = znFileIO::getLoadedGeometriesList();
    dissolveOwnReference(node, list.empty() ? osg::NodePtr() : list.back().getNode());
    frame::markReferenceLoaded(node);
    return true;
}

std::string defaultOutputDir()
{
    QString folder;
    getFromMessage<QString>(znPreferences::getData(), "FileIO tmp path", folder);
    if (folder.isEmpty())
        folder = QString::fromStdString(znFile::getTmpDir());
    return folder.toStdString();
}

} // namespace

/// The part files of one run.
class znPLMXMLLoaderJob::Import
{
public:
    Import(znPLMXMLLoaderJob& job, UnloadedParts unloaded)
        : m_job(job), m_parts(std::move(unloaded)), m_total(m_parts.size()),
          m_children(job.m_childQueue, m_parts, replaceReference, eventsOf(job))
    {
        m_children.setLoadResults([&job] { return job.m_loadConvertedPtxFiles; });
    }

    /// Leaves the reference nodes as they are, and counts as complete.
    void skip() { m_loaded = m_total; }

    /// Queues conversions, then reads what the host reads by itself.
    void start()
    {
        for (const auto& [file, nodes] : m_parts)
            if (znFile::exists(file, false, false))
                begin(file, nodes.front());
        for (const auto& [file, node] : m_directParts)
            load(file, node);
    }

    bool isComplete() const { return m_loaded + m_children.arrivedCount() == m_total; }

private:
    static parts::PartChildren::Events eventsOf(znPLMXMLLoaderJob& job)
    {
        return {
            [&job](znPtxConverterJob* child) { Q_EMIT job.childPtxConverterJobCreated(child); },
            [&job](znOsbLoaderJob* child, const QString& file) { Q_EMIT job.childOsbLoaderJobCreated(child, file); },
            [&job](znOsbLoaderJob* child) { Q_EMIT job.childOsbLoaderJobFinished(child); },
            [&job](const QString& file) { Q_EMIT job.childPtxImportFinished(file); }};
    }

    void begin(const std::string& file, const osg::NodePtr& firstNode)
    {
        const QString path = QString::fromStdString(file);
        znFileIOHelper::getFileTypeByFileName(path);
        if (znFileIOHelper::isPtxFile(path)) {
            m_job.m_waitingForChildren = true;
            Q_EMIT m_job.foundChildFile(path);
            m_children.convert(file, QString::fromStdString(m_job.m_outputDir));
            return;
        }
        Q_EMIT m_job.foundChildFile(path);
        m_directParts.emplace_back(path, firstNode);
    }

    void load(const QString& file, const osg::NodePtr& node)
    {
        Q_EMIT m_job.loadingChildFileStarted(file);
        const bool loaded = loadInto(file, node);
        m_loaded += loaded ? 1 : 0;
        Q_EMIT m_job.loadingChildFileFinished(file, loaded ? znCADFileTypes::JobSucceeded : znCADFileTypes::JobFailed);
    }

    znPLMXMLLoaderJob& m_job;
    UnloadedParts m_parts;
    std::size_t m_total;
    std::size_t m_loaded = 0;
    parts::PartChildren m_children;
    std::vector<DirectPart> m_directParts;
};

znPLMXMLLoaderJob::znPLMXMLLoaderJob(const std::string& file, znJobQueue* queue)
    : znAbstractTimerJob(100, nullptr), m_file(file), m_childQueue(new znManagedJobQueue(this)), m_jobQueue(queue)
{
    m_outputDir = defaultOutputDir();
    m_progressCallback = [this](int percent) {
        Q_EMIT progressChanged(static_cast<unsigned>(percent), QStringLiteral("Loading"));
    };
    m_childQueue->setDefaultPriority(znCADFileTypes::ChildPriority);
    m_childQueue->setDeleteFinishedOrFailedJobs(true);
    connect(
        m_childQueue, &znJobQueue::jobQueueEmpty, m_childQueue, [this] { childrenEnded(); }, Qt::DirectConnection);
}

znPLMXMLLoaderJob::~znPLMXMLLoaderJob() = default;

void znPLMXMLLoaderJob::setOutputDir(std::string dir)
{
    m_outputDir = std::move(dir);
}

void znPLMXMLLoaderJob::setLoadConvertedPtxFiles(bool load)
{
    m_loadConvertedPtxFiles = load;
}

void znPLMXMLLoaderJob::abort() {}

void znPLMXMLLoaderJob::finish()
{
    if (m_loadedNode)
        Q_EMIT nodeReady(m_loadedNode);
    znAbstractJob::finish();
}

void znPLMXMLLoaderJob::process()
{
    Q_EMIT started();
    znOSGWidget::cancelAntialiasing();
    znController::setBusy(true, false);
    znTexSearch::setCurrentFile(m_file.c_str());
    parts::runToEnd([this] { import(); },
                    [] {
                        znTexSearch::clearCurrentFile();
                        znController::setBusy(false, false);
                    });
    Q_EMIT processingFinished();
}

/// A missing document is told twice: here and by the end of `process`.
void znPLMXMLLoaderJob::import()
{
    if (!znFile::exists(m_file, false, false)) {
        m_state = znCADFileTypes::JobFailed;
        Q_EMIT processingFinished();
        return;
    }
    m_state = znCADFileTypes::JobRunning;
    znPLMXMLLoader loader(m_file);
    if (loader.load())
        m_loadedNode = loader.getNode();
    Import import(*this, loader.getUnloadedParts());
    const znImportOptions options("PLMXML", false, true);
    if (loader.getUnloadedParts().empty() || !options.getImportReferencedFiles())
        import.skip();
    else
        import.start();
    m_childQueue->startProcessing();
    parts::PartChildren::wait(m_waitingForChildren);
    frame::notifyReferences(m_loadedNode, frame::TreeNotice::PlmxmlImport);
    m_state = import.isComplete() ? znCADFileTypes::JobSucceeded : znCADFileTypes::JobPartial;
}

void znPLMXMLLoaderJob::createBaseLoadConnections(znAbstractJob*, znFileIOService*, const QString&) {}

/// Nothing writes the start time: what listeners get is the reading of the clock.
void znPLMXMLLoaderJob::childrenEnded()
{
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    const std::int64_t elapsed =
        std::chrono::duration_cast<std::chrono::nanoseconds>(now).count() - m_conversionStartTime;
    Q_EMIT childrenConversionFinished(static_cast<double>(elapsed) / 1e9);
    m_childQueue->stopProcessing();
    m_waitingForChildren = false;
}
