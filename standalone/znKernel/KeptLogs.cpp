#include "standalone/znKernel/KeptLogs.h"

#include "protocol/FileNames.h"
#include "standalone/session/Session.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFileInfo>

namespace zn::kernel
{

namespace
{

constexpr QFileDevice::Permissions readAndWrite = QFileDevice::ReadOwner | QFileDevice::WriteOwner;

/// Of one session.
struct KeptCount {
    int logs = 0;
};

/// An import may lose thousands of parts, so the folder is not looked through for each.
constexpr int logsBetweenLooks = 100;

/// False if others could see what is put there.
bool makePrivateFolder(const QString& folder)
{
    return QDir().mkpath(folder) && QFile::setPermissions(folder, readAndWrite | QFileDevice::ExeOwner);
}

/// Logs of one name come from many sessions, and several within a millisecond from one. The names of their copies
/// follow each other in time.
QString copyName(const QString& logFile, int number)
{
    const QString time = QDateTime::currentDateTimeUtc().toString(QStringLiteral("yyyyMMdd-HHmmss-zzz"));
    return QStringLiteral("%1-%2-%3-%4")
        .arg(time)
        .arg(QCoreApplication::applicationPid())
        .arg(number, 4, 10, QLatin1Char('0'))
        .arg(QFileInfo(logFile).fileName());
}

void removeSurplus(const QString& folder)
{
    const QStringList pattern{QLatin1Char('*') + QLatin1String(protocol::LogSuffix)};
    const QDateTime oldest = QDateTime::currentDateTimeUtc().addDays(-keptLogDays);
    int count = 0;
    for (const QFileInfo& log : QDir(folder).entryInfoList(pattern, QDir::Files | QDir::Hidden, QDir::Time))
        if (++count > mostKeptLogs || log.lastModified() < oldest)
            QFile::remove(log.filePath());
}

} // namespace

QString keptLogsFolder()
{
    // A relative one is to be passed over.
    const QString state = qEnvironmentVariable("XDG_STATE_HOME");
    const QString base = QDir::isAbsolutePath(state) ? state : QDir::homePath() + QStringLiteral("/.local/state");
    return base + QStringLiteral("/znimport/logs");
}

bool goesWithSession(const QString& file)
{
    const QString folder = QFileInfo(Session::require().temporaryFolder()).absoluteFilePath();
    return QFileInfo(file).absoluteFilePath().startsWith(folder + QLatin1Char('/'));
}

QString keepLog(const QString& logFile)
{
    const QString folder = keptLogsFolder();
    if (!QFileInfo(logFile).isFile() || !makePrivateFolder(folder))
        return QString();
    const int number = Session::require().state<KeptCount>().logs++;
    const QString copy = folder + QLatin1Char('/') + copyName(logFile, number);
    if (!QFile::copy(logFile, copy))
        return QString();
    QFile::setPermissions(copy, readAndWrite);
    if (number % logsBetweenLooks == 0)
        removeSurplus(folder);
    return copy;
}

} // namespace zn::kernel
