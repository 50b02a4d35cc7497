// How the job follows the progress file.

#include "converter/StageLabels.h"
#include "converter/znPtxConverterJob.h"

#include <QFile>
#include <QFileSystemWatcher>
#include <QPointer>

#include <fstream>
#include <locale>

namespace
{

struct Progress {
    int value = -1;
    std::string stage;
};

/// The file may be half rewritten at this moment: what cannot be read stays as it was.
Progress readProgress(const QString& file)
{
    Progress progress;
    std::ifstream stream(QFile::encodeName(file).constData());
    stream.imbue(std::locale::classic());
    if (!(stream >> progress.value))
        progress.value = -1;
    stream >> progress.stage;
    return progress;
}

} // namespace

void znPtxConverterJob::createTmpFileWatcher()
{
    connect(this, &znAbstractJob::started, this, &znPtxConverterJob::watchTempFile);
    connect(this, &znAbstractJob::finished, [this] { releaseWatcher(); });
}

/// The watcher itself lives from the first launch of a run to its end: it takes one of the few notification instances
/// that a user has, and thousands of jobs may wait or be kept after their end.
void znPtxConverterJob::watchTempFile()
{
    if (!m_watcher) {
        m_watcher = std::make_unique<QFileSystemWatcher>();
        connect(m_watcher.get(), &QFileSystemWatcher::fileChanged, [this] { reportProgress(); });
    }
    std::ofstream seed(QFile::encodeName(m_tempFile).constData(), std::ios::trunc);
    seed << "0" << std::endl;
    seed << "Unknown" << std::endl;
    seed.close();
    m_watcher->addPath(m_tempFile);
}

void znPtxConverterJob::unwatchTempFile()
{
    if (m_watcher)
        m_watcher->removePath(m_tempFile);
}

/// The end may come from an event loop inside a notification of the watcher, so it goes later.
void znPtxConverterJob::releaseWatcher()
{
    unwatchTempFile();
    if (QFileSystemWatcher* const watcher = m_watcher.release()) {
        watcher->disconnect();
        watcher->deleteLater();
    }
}

void znPtxConverterJob::reportProgress()
{
    const Progress progress = readProgress(m_tempFile);
    if (progress.value < 0 || progress.value == m_lastProgress)
        return;
    // A slot may run an event loop in which this job ends and is deleted.
    const QPointer<znPtxConverterJob> self(this);
    Q_EMIT progressChanged(static_cast<unsigned>(progress.value), znStageLabels::translated(progress.stage));
    if (self)
        m_lastProgress = progress.value;
}
