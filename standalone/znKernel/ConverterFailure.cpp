#include "standalone/znKernel/ConverterFailure.h"

#include "host/znKernel/znPtxHelper.h"
#include "standalone/znJobProcessing/LostProcess.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <csignal>
#include <map>

namespace zn
{

namespace
{

QString tr(const char* text)
{
    return QCoreApplication::translate("ConverterFailure", text);
}

} // namespace

QString exitCodeMeaning(int exitCode)
{
    static const std::map<int, const char*> meanings = {
        {0, QT_TRANSLATE_NOOP("ConverterFailure", "The converter ended well.")},
        {2, QT_TRANSLATE_NOOP("ConverterFailure", "The converter did not understand its command line.")},
        {3, QT_TRANSLATE_NOOP("ConverterFailure", "The file is missing or cannot be read.")},
        {4, QT_TRANSLATE_NOOP("ConverterFailure", "The file is of an old version and needs the update tool.")},
        {5, QT_TRANSLATE_NOOP("ConverterFailure", "The file has no external parts.")},
        {-1, QT_TRANSLATE_NOOP("ConverterFailure", "The file has no external parts.")},
        {6, QT_TRANSLATE_NOOP("ConverterFailure", "The converter has no reader for this format.")},
        {7, QT_TRANSLATE_NOOP("ConverterFailure", "The file is damaged.")},
        {8, QT_TRANSLATE_NOOP("ConverterFailure", "The converted file could not be written.")},
        {10, QT_TRANSLATE_NOOP("ConverterFailure", "The conversion needed more memory than its limit allows.")},
        {11, QT_TRANSLATE_NOOP("ConverterFailure", "The conversion took longer than its limit allows.")},
        {12, QT_TRANSLATE_NOOP("ConverterFailure", "The conversion stopped making progress.")},
        {21, QT_TRANSLATE_NOOP("ConverterFailure", "The conversion was cancelled.")},
        {25, QT_TRANSLATE_NOOP("ConverterFailure", "There is nothing to import in the file.")},
        {znJobs::lostExitCode, QT_TRANSLATE_NOOP("ConverterFailure", "The machine that ran the converter failed.")},
        {znPtxHelper::CouldNotStart, QT_TRANSLATE_NOOP("ConverterFailure", "The converter could not be started.")},
    };
    if (const auto found = meanings.find(exitCode); found != meanings.end())
        return tr(found->second);
    if (exitCode == 128 + SIGTERM || exitCode == 128 + SIGINT)
        return tr("The converter was asked to stop.");
    if (exitCode > 128 && exitCode < 128 + 65)
        return tr("The converter crashed (signal %1).").arg(exitCode - 128);
    return tr("The converter ended with the exit code %1.").arg(exitCode);
}

QString lastErrorOfLog(const QString& logFile)
{
    QFile file(logFile);
    if (!file.open(QIODevice::ReadOnly))
        return QString();
    // The end is enough, however long the log became.
    constexpr qint64 tail = 65536;
    file.seek(std::max<qint64>(0, file.size() - tail));
    const QByteArray mark = "Error: ";
    QByteArray last;
    for (const QByteArray& line : file.readAll().split('\n'))
        if (const int at = line.indexOf(mark); at >= 0)
            last = line.mid(at + mark.size());
    return QString::fromUtf8(last).trimmed();
}

QString keptLog(const QString& logFile, const QString& temporaryFolder)
{
    const QFileInfo log(logFile);
    if (!log.exists())
        return QString();
    if (!log.absoluteFilePath().startsWith(QFileInfo(temporaryFolder).absoluteFilePath() + QLatin1Char('/')))
        return log.absoluteFilePath();
    const QString folder = QDir::tempPath() + QStringLiteral("/znimport-logs");
    QDir().mkpath(folder);
    const QString copy = folder + QLatin1Char('/') + log.fileName();
    QFile::remove(copy);
    return QFile::copy(log.absoluteFilePath(), copy) ? copy : QString();
}

} // namespace zn
