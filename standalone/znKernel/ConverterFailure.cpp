#include "standalone/znKernel/ConverterFailure.h"

#include "host/znKernel/znPtxHelper.h"
#include "protocol/ExitCode.h"
#include "protocol/FileNames.h"
#include "standalone/znJobProcessing/LostProcess.h"

#include <QCoreApplication>
#include <QFile>

#include <csignal>
#include <map>

namespace zn::kernel
{

namespace
{

QString translated(const char* text)
{
    return QCoreApplication::translate("ConverterFailure", text);
}

} // namespace

QString exitCodeMeaning(int exitCode)
{
    using protocol::ExitCode;
    static const std::map<int, const char*> meanings = {
        {number(ExitCode::Success), QT_TRANSLATE_NOOP("ConverterFailure", "The converter ended well.")},
        {number(ExitCode::WrongUse),
         QT_TRANSLATE_NOOP("ConverterFailure", "The converter did not understand its command line.")},
        {number(ExitCode::InputUnreadable),
         QT_TRANSLATE_NOOP("ConverterFailure", "The file is missing or cannot be read.")},
        {number(ExitCode::OldStylarFile),
         QT_TRANSLATE_NOOP("ConverterFailure", "The file is of an old version and needs the update tool.")},
        {number(ExitCode::NoExternalParts), QT_TRANSLATE_NOOP("ConverterFailure", "The file has no external parts.")},
        {number(ExitCode::NoExternalPartsEither),
         QT_TRANSLATE_NOOP("ConverterFailure", "The file has no external parts.")},
        {number(ExitCode::Unsupported),
         QT_TRANSLATE_NOOP("ConverterFailure", "The converter has no reader for this format.")},
        {number(ExitCode::Damaged), QT_TRANSLATE_NOOP("ConverterFailure", "The file is damaged.")},
        {number(ExitCode::OutputFailed),
         QT_TRANSLATE_NOOP("ConverterFailure", "The converted file could not be written.")},
        {number(ExitCode::MemoryLimit),
         QT_TRANSLATE_NOOP("ConverterFailure", "The conversion needed more memory than its limit allows.")},
        {number(ExitCode::TimeLimit),
         QT_TRANSLATE_NOOP("ConverterFailure", "The conversion took longer than its limit allows.")},
        {number(ExitCode::StallLimit),
         QT_TRANSLATE_NOOP("ConverterFailure", "The conversion stopped making progress.")},
        {number(ExitCode::Cancelled), QT_TRANSLATE_NOOP("ConverterFailure", "The conversion was cancelled.")},
        {number(ExitCode::NothingToImport),
         QT_TRANSLATE_NOOP("ConverterFailure", "There is nothing to import in the file.")},
        {znJobs::lostExitCode, QT_TRANSLATE_NOOP("ConverterFailure", "The machine that ran the converter failed.")},
        {znJobs::launcherExitCode, QT_TRANSLATE_NOOP("ConverterFailure", "The launcher of the converter failed.")},
        {znPtxHelper::CouldNotStart, QT_TRANSLATE_NOOP("ConverterFailure", "The converter could not be started.")},
    };
    if (const auto found = meanings.find(exitCode); found != meanings.end())
        return translated(found->second);
    const std::optional<int> signal = protocol::signalOf(exitCode);
    if (signal == SIGTERM || signal == SIGINT)
        return translated(QT_TRANSLATE_NOOP("ConverterFailure", "The converter was asked to stop."));
    if (signal)
        return translated(QT_TRANSLATE_NOOP("ConverterFailure", "The converter crashed (signal %1).")).arg(*signal);
    return translated(QT_TRANSLATE_NOOP("ConverterFailure", "The converter ended with the exit code %1."))
        .arg(exitCode);
}

QString lastErrorOfLog(const QString& logFile)
{
    QFile file(logFile);
    if (!file.open(QIODevice::ReadOnly))
        return QString();
    // The end is enough, however long the log became.
    constexpr qint64 tail = 65536;
    file.seek(std::max<qint64>(0, file.size() - tail));
    const QByteArray mark = protocol::LogErrorMark;
    QByteArray last;
    for (const QByteArray& line : file.readAll().split('\n'))
        if (const int at = line.indexOf(mark); at >= 0)
            last = line.mid(at + mark.size());
    return QString::fromUtf8(last).trimmed();
}

} // namespace zn::kernel
