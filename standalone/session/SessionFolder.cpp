#include "standalone/session/SessionFolder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace zn
{

namespace
{

const QLatin1String Prefix("zn-session-");
const QLatin1String LockName("/.lock");

/// Where folders are made; QDir's answer is empty when there is no such folder.
QString parentFolder()
{
    const QString chosen = QFile::decodeName(qgetenv("TMPDIR"));
    return chosen.isEmpty() ? QStringLiteral("/tmp") : QDir::cleanPath(chosen);
}

/// Empty when it cannot be made; `errno` tells why.
QString makeFolder()
{
    QByteArray pattern = QFile::encodeName(parentFolder() + QLatin1Char('/') + Prefix + QLatin1String("XXXXXX"));
    const char* made = ::mkdtemp(pattern.data());
    return made ? QFile::decodeName(made) : QString();
}

int openLocked(const QString& path, int flags)
{
    const int descriptor = ::open(QFile::encodeName(path).constData(), flags | O_CLOEXEC | O_NOFOLLOW, 0600);
    if (descriptor < 0 || ::flock(descriptor, LOCK_EX | LOCK_NB) == 0)
        return descriptor;
    ::close(descriptor);
    return -1;
}

// The lock appears under its name when it is held: who finds it free has found somebody dead.
int makeLock(const QString& folder)
{
    const QString made = folder + QStringLiteral("/.lock.new");
    const int descriptor = openLocked(made, O_RDWR | O_CREAT | O_EXCL);
    if (descriptor >= 0)
        QFile::rename(made, folder + LockName);
    return descriptor;
}

void removeAbandoned()
{
    const QDir parent(parentFolder());
    const QDir::Filters folders = QDir::Dirs | QDir::NoSymLinks | QDir::NoDotAndDotDot;
    for (const QFileInfo& folder : parent.entryInfoList({Prefix + QLatin1Char('*')}, folders)) {
        if (folder.ownerId() != ::geteuid())
            continue;
        const int lock = openLocked(folder.filePath() + LockName, O_RDWR);
        if (lock < 0)
            continue;
        QDir(folder.filePath()).removeRecursively();
        ::close(lock);
    }
}

} // namespace

std::optional<QString> SessionFolder::trouble()
{
    const QString folder = makeFolder();
    if (folder.isEmpty())
        return QStringLiteral("the folder for temporary files, %1, cannot be used: %2; TMPDIR names another")
            .arg(parentFolder(), qt_error_string(errno));
    QDir().rmdir(folder);
    return std::nullopt;
}

SessionFolder::SessionFolder()
{
    removeAbandoned();
    m_path = makeFolder();
    if (m_path.isEmpty())
        qFatal("cannot make a temporary folder: %s", strerror(errno));
    m_lock = makeLock(m_path);
}

SessionFolder::~SessionFolder()
{
    if (m_lock >= 0)
        ::close(m_lock);
}

void SessionFolder::remove()
{
    QDir(m_path).removeRecursively();
}

} // namespace zn
