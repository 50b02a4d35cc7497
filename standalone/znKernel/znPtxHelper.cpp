#include "host/znKernel/znPtxHelper.h"

#include "host/znKernel/znFileIOHelper.h"
#include "standalone/scenefile/ConvertedTree.h"
#include "standalone/session/Session.h"
#include "standalone/session/SettingRows.h"
#include "standalone/znJobProcessing/JobScheduler.h"
#include "standalone/znKernel/ConverterCommand.h"
#include "standalone/znKernel/ConverterFailure.h"
#include "standalone/znKernel/Launcher.h"
#include "standalone/znUtils/CallTrace.h"

#include <QFileInfo>

#include <algorithm>
#include <optional>

namespace
{

zn::Settings& settings()
{
    return zn::Session::require().settings();
}

QString pathIn(const std::string& folder, const QString& name)
{
    return QString::fromStdString(folder) + QLatin1Char('/') + name;
}

/// The words that start the converter of the file's own format, if the settings name one.
std::optional<QStringList> ownConverter(const zn::TemplateValues& values)
{
    const auto type = znFileIOHelper::getFileTypeByFileName(values.input);
    if (!znFileIOHelper::isPtxFile(values.input))
        return std::nullopt;
    const QString format = QString::fromLatin1(znCADFileTypes::fileTypeName(type));
    const QString program = settings().text(zn::converterProgramSetting(format));
    if (program.isEmpty())
        return std::nullopt;
    return QStringList(program) + zn::filledTemplate(settings().text(zn::converterArgumentsSetting(format)), values);
}

/// Somebody wants the exact surfaces: to keep them, or to mesh them anew.
bool needsSurfaces()
{
    const bool remeshes = settings().isOn(QStringLiteral("optimize.mergeGeometries")) &&
                          !settings().isOn(QStringLiteral("optimize.solidKernel"));
    return remeshes || settings().isOn(QStringLiteral("optimize.keepNurbs"));
}

/// The words that start the converter of all formats. Beside others it works on one core, and where a launcher runs it
/// within what that was asked for; options that the user chose come later and win.
QStringList commonConverter(const zn::TemplateValues& values, const zn::Launcher& launcher)
{
    QStringList words{zn::converterProgram(settings().text(QStringLiteral("converter.program")))};
    if (values.externalParts)
        words.append(QStringLiteral("--external-parts"));
    if (needsSurfaces())
        words << QStringLiteral("--set") << QStringLiteral("keep-brep=1");
    if (const int level = settings().integer(QStringLiteral("mesh.level")); level > 0)
        words << QStringLiteral("--set") << QStringLiteral("mesh.level=%1").arg(level);
    QStringList options = launcher.converterOptions();
    if (!launcher.isUsed() && znJobs::JobScheduler::instance().hasSiblingProcesses())
        options << QStringLiteral("threads=1");
    options << settings().text(QStringLiteral("converter.options")).split(QLatin1Char(' '), Qt::SkipEmptyParts);
    for (const QString& option : options)
        words << QStringLiteral("--set") << option;
    return words << values.input << values.output;
}

} // namespace

std::pair<std::string, std::string> znPtxHelper::createProcessCommand(const std::string& input, bool externalParts,
                                                                      const std::string& outputDir)
{
    const zn::TracedCall call("znPtxHelper::createProcessCommand", input, externalParts, outputDir);
    const QString file = QFileInfo(QString::fromStdString(input)).absoluteFilePath();
    const QString output = pathIn(outputDir, zn::convertedName(file) + QStringLiteral(".osb"));
    const zn::TemplateValues values{file, output, externalParts};
    const zn::Launcher launcher(settings(), file, output);
    const QStringList words = ownConverter(values).value_or(commonConverter(values, launcher));
    return {zn::joinCommand(launcher.words() + words).toStdString(), output.toStdString()};
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
    const QString arguments = settings().text(QStringLiteral("converter.updateArguments"));
    return zn::joinCommand(zn::Launcher(settings(), file, output).words() + QStringList(program) +
                           zn::filledTemplate(arguments, {file, output}))
        .toStdString();
}

QString znPtxHelper::getProcessErrorDescription(int exitCode, const std::string& logFile)
{
    const zn::TracedCall call("znPtxHelper::getProcessErrorDescription", exitCode, logFile);
    const QString log = QString::fromStdString(logFile);
    QString text = zn::exitCodeMeaning(exitCode);
    if (const QString error = zn::lastErrorOfLog(log); !error.isEmpty())
        text += QLatin1Char(' ') + error;
    if (const QString kept = zn::keptLog(log, zn::Session::require().temporaryFolder()); !kept.isEmpty())
        text += QStringLiteral(" [log: %1]").arg(kept);
    return text;
}

bool znPtxHelper::isConvertedPtxTree(const osg::NodePtr& root)
{
    const zn::TracedCall call("znPtxHelper::isConvertedPtxTree", root);
    return osg::converted::isConvertedTree(root);
}

void znPtxHelper::removePtxTag(const osg::NodePtr& root)
{
    const zn::TracedCall call("znPtxHelper::removePtxTag", root);
    if (!osg::converted::isConvertedTree(root))
        return;
    std::vector<std::string> tags = osg::tagsOf(root);
    std::erase(tags, osg::converted::ConvertedTag);
    osg::setTags(root, std::move(tags));
}
