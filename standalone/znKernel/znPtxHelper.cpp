#include "host/znKernel/znPtxHelper.h"

#include "standalone/session/znStandaloneSession.h"
#include "standalone/znKernel/ConverterCommand.h"
#include "standalone/znKernel/ConverterFailure.h"
#include "standalone/znUtils/CallTrace.h"

#include <QFileInfo>

namespace
{

zn::Settings& settings()
{
    return znStandaloneSession::require().settings();
}

QString pathIn(const std::string& folder, const QString& name)
{
    return QString::fromStdString(folder) + QLatin1Char('/') + name;
}

} // namespace

std::pair<std::string, std::string> znPtxHelper::createProcessCommand(const std::string& input, bool externalParts,
                                                                      const std::string& outputDir)
{
    const zn::TracedCall call("znPtxHelper::createProcessCommand", input, externalParts, outputDir);
    const QString file = QFileInfo(QString::fromStdString(input)).absoluteFilePath();
    const QString output = pathIn(outputDir, zn::convertedName(file) + QStringLiteral(".osb"));
    QStringList words{zn::converterProgram(settings().text(QStringLiteral("converter.program")))};
    if (externalParts)
        words.append(QStringLiteral("--external-parts"));
    const QString options = settings().text(QStringLiteral("converter.options"));
    for (const QString& option : options.split(QLatin1Char(' '), Qt::SkipEmptyParts))
        words << QStringLiteral("--set") << option;
    words << file << output;
    return {zn::joinCommand(words).toStdString(), output.toStdString()};
}

std::string znPtxHelper::createStylarConvertCommand(const std::string& input, std::string& convertedFile,
                                                    const std::string& outputDir)
{
    const zn::TracedCall call("znPtxHelper::createStylarConvertCommand", input, outputDir);
    const QString program = settings().text(QStringLiteral("converter.updateProgram"));
    if (program.isEmpty())
        return std::string();
    const QString file = QFileInfo(QString::fromStdString(input)).absoluteFilePath();
    const QString output = pathIn(outputDir, zn::convertedName(file) + QStringLiteral("-updated.styl"));
    convertedFile = output.toStdString();
    return zn::joinCommand({program, file, output}).toStdString();
}

QString znPtxHelper::getProcessErrorDescription(int exitCode, const std::string& logFile)
{
    const zn::TracedCall call("znPtxHelper::getProcessErrorDescription", exitCode, logFile);
    const QString log = QString::fromStdString(logFile);
    QString text = zn::exitCodeMeaning(exitCode);
    if (const QString error = zn::lastErrorOfLog(log); !error.isEmpty())
        text += QLatin1Char(' ') + error;
    if (const QString kept = zn::keptLog(log, znStandaloneSession::require().temporaryFolder()); !kept.isEmpty())
        text += QStringLiteral(" [log: %1]").arg(kept);
    return text;
}
