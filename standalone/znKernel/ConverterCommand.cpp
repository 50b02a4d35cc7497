#include "standalone/znKernel/ConverterCommand.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QFileInfo>
#include <QStandardPaths>

namespace zn
{

QString joinCommand(const QStringList& words)
{
    QStringList quoted;
    for (QString word : words)
        quoted.append(QLatin1Char('"') + word.replace(QLatin1Char('"'), QStringLiteral("\"\"\"")) + QLatin1Char('"'));
    return quoted.join(QLatin1Char(' '));
}

QString convertedName(const QString& input)
{
    const QFileInfo info(input);
    const QByteArray path = info.absoluteFilePath().toUtf8();
    const QByteArray hash = QCryptographicHash::hash(path, QCryptographicHash::Sha1).toHex().left(10);
    return info.completeBaseName() + QLatin1Char('-') + QString::fromLatin1(hash);
}

QString converterProgram(const QString& setting)
{
    const QString name = QStringLiteral("ptxconvert");
    if (!setting.isEmpty())
        return setting;
    const QString beside = QCoreApplication::applicationDirPath() + QLatin1Char('/') + name;
    if (QFileInfo(beside).isExecutable())
        return beside;
    const QString onPath = QStandardPaths::findExecutable(name);
    return onPath.isEmpty() ? name : onPath;
}

} // namespace zn
