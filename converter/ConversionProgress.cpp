#include "converter/ConversionProgress.h"

#include <QFile>
#include <QFileSystemWatcher>

#include <fstream>
#include <locale>

namespace conversion
{

namespace
{

void writeSeed(const QString& file)
{
    std::ofstream seed(QFile::encodeName(file).constData(), std::ios::trunc);
    seed << "0" << std::endl;
    seed << "Unknown" << std::endl;
}

} // namespace

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

ConversionProgress::ConversionProgress(std::function<void()> changed) : m_changed(std::move(changed)) {}

ConversionProgress::~ConversionProgress() = default;

void ConversionProgress::watch(const QString& file)
{
    if (!m_watcher) {
        m_watcher = std::make_unique<QFileSystemWatcher>();
        QObject::connect(m_watcher.get(), &QFileSystemWatcher::fileChanged,
                         [this](const QString& changed) { fileChanged(changed); });
    }
    writeSeed(file);
    m_watcher->addPath(file);
}

/// A watch holds on to the file that it was begun with, so it begins anew for the one that has the name now; and before
/// that is read, so that no change falls in between. Whoever hears of the change may destroy this.
void ConversionProgress::fileChanged(const QString& file)
{
    m_watcher->removePath(file);
    if (QFile::exists(file))
        m_watcher->addPath(file);
    const std::function<void()> changed = m_changed;
    changed();
}

void ConversionProgress::unwatch(const QString& file)
{
    if (m_watcher)
        m_watcher->removePath(file);
}

/// The end may come from an event loop inside a notification of the watcher, so it goes later.
void ConversionProgress::release(const QString& file)
{
    unwatch(file);
    if (QFileSystemWatcher* const watcher = m_watcher.release()) {
        watcher->disconnect();
        watcher->deleteLater();
    }
}

} // namespace conversion
