#include "loader/znPtxLoaderJob.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Edit.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "host/znJobProcessing/znManagedJobQueue.h"
#include "host/znKernel/znController.h"
#include "host/znKernel/znOSGWidget.h"
#include "host/znKernel/znTexSearch.h"
#include "host/znOpenSGExt/ExtReference.h"
#include "host/znOpenSGUtils/znNodeUtils.h"
#include "host/znUtils/znFile.h"
#include "import/TreeEdits.h"
#include "loader/PartChildren.h"
#include "loader/RunEnd.h"
#include "loader/UnloadedPartFiles.h"

#include <QFileInfo>

#include <chrono>
#include <cstdio>

namespace
{

std::int64_t steadyNanoseconds()
{
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::nanoseconds>(now).count();
}

/// An abort amid the start of the children takes entries out of the table.
std::vector<std::string> pathsOf(const UnloadedParts& parts)
{
    std::vector<std::string> paths;
    paths.reserve(parts.size());
    for (const auto& [path, nodes] : parts)
        paths.push_back(path);
    return paths;
}

/// Moves what a copy of `loaded` holds below its root under `target`, which keeps its own core.
void fillReference(const osg::NodePtr& target, const osg::NodePtr& loaded)
{
    const osg::RefPtr<osg::NodePtr> clone(osg::cloneTree(loaded, true));
    frame::moveChildren(clone, target);
    frame::markReferenceLoaded(target);
}

} // namespace

znPtxLoaderJob::znPtxLoaderJob(const QString& convertedFile, const QString& originalFile)
    : znOsbLoaderJob(convertedFile), m_originalFile(originalFile), m_childQueue(new znManagedJobQueue(this))
{
    m_childQueue->setDefaultPriority(znCADFileTypes::ChildPriority);
    m_childQueue->setDeleteFinishedOrFailedJobs(true);
    connect(m_childQueue, &znJobQueue::jobQueueEmpty, [this] { childrenEnded(); });
}

znPtxLoaderJob::~znPtxLoaderJob() = default;

void znPtxLoaderJob::abort()
{
    m_childQueue->abortAllJobs();
}

void znPtxLoaderJob::process()
{
    parts::runToEnd([this] { import(); },
                    [this] {
                        znTexSearch::clearCurrentFile();
                        znController::setBusy(false, false);
                        Q_EMIT processingFinished();
                    });
}

void znPtxLoaderJob::import()
{
    Q_EMIT started();
    znOSGWidget::cancelAntialiasing();
    znController::setBusy(true, false);
    znTexSearch::setCurrentFile(m_file.toUtf8().constData());

    loadConvertedFile();
    if (m_state == znCADFileTypes::JobFailed)
        return;
    m_state = znCADFileTypes::JobRunning;
    znNodeUtils::setFileInfo(m_loadedNode, m_originalFile.toUtf8().constData(), nullptr);
    repairStoredReference();
    m_state = importParts() ? znCADFileTypes::JobSucceeded : znCADFileTypes::JobPartial;
}

void znPtxLoaderJob::loadConvertedFile()
{
    m_holdFinish = true;
    parts::runToEnd([this] { znOsbLoaderJob::process(); }, [this] { m_holdFinish = false; });
}

/// The file may have been converted under another path than the one it is imported from.
void znPtxLoaderJob::repairStoredReference()
{
    const auto reference = osg::fcCast<osg::ExtReference>(m_loadedNode->getCore());
    if (!reference)
        return;
    const std::string path = znFile::convertSeparators(m_originalFile.toStdString());
    const osg::FileReferencePtr source = reference->getSourceFile();
    if (!source || source->getPath() == path)
        return;
    std::puts("Replace stored reference!");
    osg::beginEditCP(source, osg::FileReferenceBase::PathFieldMask, 1);
    source->setPath(path);
    osg::endEditCP(source, osg::FileReferenceBase::PathFieldMask, 1);
}

UnloadedParts znPtxLoaderJob::getUnloadedPartFiles()
{
    return parts::wantsPartFiles(m_originalFile) ? parts::unloadedPartsOf(m_loadedNode) : UnloadedParts();
}

/// True when every part arrived.
bool znPtxLoaderJob::importParts()
{
    UnloadedParts unloaded = getUnloadedPartFiles();
    const std::size_t expected = unloaded.size();
    const QString outputDir = QFileInfo(m_file).absolutePath();
    if (unloaded.empty())
        return true;

    // It outlives every child: the wait ends when the queue is empty.
    parts::PartChildren children(
        m_childQueue, unloaded, fillReference,
        {[this](znPtxConverterJob* job) { Q_EMIT childPtxConverterJobCreated(job); },
         [this](znOsbLoaderJob* job, const QString& partFile) { Q_EMIT childOsbLoaderJobCreated(job, partFile); },
         [this](znOsbLoaderJob* job) { Q_EMIT childOsbLoaderJobFinished(job); },
         [this](const QString& partFile) { Q_EMIT childPtxImportFinished(partFile); }});
    m_startTime = steadyNanoseconds();
    m_waiting = true;
    for (const std::string& path : pathsOf(unloaded)) {
        Q_EMIT startingChildPtxImport(QString::fromStdString(path));
        children.convert(path, outputDir);
    }
    m_childQueue->startProcessing();
    parts::PartChildren::wait(m_waiting);
    return children.arrivedCount() == expected;
}

void znPtxLoaderJob::childrenEnded()
{
    const double elapsed = static_cast<double>(steadyNanoseconds() - m_startTime) / 1000000000;
    Q_EMIT childrenConversionFinished(elapsed);
    m_childQueue->stopProcessing();
    m_waiting = false;
}
