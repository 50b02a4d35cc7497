#include "standalone/znUtils/InstalledProgram.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QStringList>

#if !defined(_WIN32)
#    include <dlfcn.h>
#endif

namespace zn
{

namespace
{

/// Of the file that this code was loaded from; empty when the system does not tell.
QString folderOfLibrary()
{
#if !defined(_WIN32)
    Dl_info info{};
    if (dladdr(reinterpret_cast<const void*>(&installedProgram), &info) != 0 && info.dli_fname)
        return QFileInfo(QFile::decodeName(info.dli_fname)).canonicalPath();
#endif
    return {};
}

/// The folders of programs that an installation may have for this folder of libraries: lib or lib/<architecture>.
QStringList foldersOfPrograms()
{
    const QString library = folderOfLibrary();
    if (library.isEmpty())
        return {};
    return {QDir::cleanPath(library + QStringLiteral("/../bin")),
            QDir::cleanPath(library + QStringLiteral("/../../bin"))};
}

} // namespace

QString installedProgram(const QString& name)
{
    for (const QString& folder : QStringList(QCoreApplication::applicationDirPath()) + foldersOfPrograms()) {
        const QString path = folder + QLatin1Char('/') + name;
        if (const QFileInfo info(path); info.isFile() && info.isExecutable())
            return path;
    }
    const QString onPath = QStandardPaths::findExecutable(name);
    return onPath.isEmpty() ? name : onPath;
}

} // namespace zn
