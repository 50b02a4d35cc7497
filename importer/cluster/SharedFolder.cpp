#include "importer/cluster/SharedFolder.h"

#include "protocol/FileNames.h"

#include <QDir>
#include <QObject>
#include <QTemporaryDir>

namespace importer::cluster
{

std::optional<QString> SharedFolder::make(const QString& parent)
{
    QTemporaryDir folder(QDir(parent).absoluteFilePath(QStringLiteral("znimport-XXXXXX")));
    if (!folder.isValid())
        return QObject::tr("cannot make a folder for converted files in %1: %2").arg(parent, folder.errorString());
    folder.setAutoRemove(false);
    m_path = folder.path();
    return std::nullopt;
}

SharedFolder::~SharedFolder()
{
    if (m_path.isEmpty())
        return;
    QDir folder(m_path);
    const QStringList all = folder.entryList(QDir::Files | QDir::Hidden | QDir::System);
    for (const QString& name : all)
        if (!m_keepsLogs || !name.endsWith(QLatin1String(protocol::LogSuffix)))
            folder.remove(name);
    folder.rmdir(m_path);
}

} // namespace importer::cluster
