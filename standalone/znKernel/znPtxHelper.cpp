#include "host/znKernel/znPtxHelper.h"

#include "files/scenefile/ConvertedTree.h"
#include "host/znKernel/znFileIOHelper.h"
#include "protocol/Options.h"
#include "standalone/loading/ReferenceCheck.h"
#include "standalone/session/Session.h"
#include "standalone/znJobProcessing/JobScheduler.h"
#include "standalone/znKernel/ConverterCommand.h"
#include "standalone/znKernel/ConverterFailure.h"
#include "standalone/znKernel/ConverterServer.h"
#include "standalone/znKernel/KeptLogs.h"
#include "standalone/znKernel/Launcher.h"
#include "standalone/znKernel/LauncherFailure.h"
#include "standalone/znKernel/OutputNames.h"
#include "standalone/znUtils/CallTrace.h"

#include <QFileInfo>

#include <algorithm>
#include <optional>

namespace
{

namespace setting = protocol::setting;

zn::Settings& settings()
{
    return zn::Session::require().settings();
}

/// The words that start the converter of the file's own format, if the settings name one.
std::optional<QStringList> ownConverter(const zn::kernel::TemplateValues& values)
{
    const auto type = znFileIOHelper::getFileTypeByFileName(values.input);
    const auto* own = settings().formats.converter(type);
    if (!own || own->program.value().isEmpty())
        return std::nullopt;
    return QStringList(own->program) + zn::kernel::filledTemplate(own->arguments, values);
}

/// Somebody wants the exact surfaces: to keep them, or to mesh them anew.
bool needsSurfaces()
{
    const bool remeshes = settings().optimize.mergeGeometries && !settings().optimize.solidKernel;
    return remeshes || settings().optimize.keepNurbs;
}

/// What the converter is told of files that its input names; nothing where it may follow all of them. Below which
/// folder they have to lie is told by the file that was asked for, not by the one that is converted.
QStringList referenceWords()
{
    using files::references::Rule;
    const files::references::Policy policy = zn::loading::referencePolicy(zn::Session::require());
    if (policy.rule == Rule::Parts)
        return {};
    QStringList words{QLatin1String(protocol::option::References), QLatin1String(files::references::word(policy.rule))};
    if (!policy.top.empty())
        words << QLatin1String(protocol::option::ReferencesBelow) << QString::fromStdString(policy.top);
    for (const std::string& folder : policy.folders)
        words << QLatin1String(protocol::option::AllowReferences) << QString::fromStdString(folder);
    return words;
}

/// The words that start the converter of all formats. Beside others it works on one core, and where a launcher runs it
/// within what that was asked for; options that the user chose come later and win.
QStringList commonConverter(const zn::kernel::TemplateValues& values, const zn::kernel::Launcher& launcher)
{
    const QString program = zn::kernel::converterProgram(settings().converter.program);
    QStringList words;
    if (settings().converter.server && settings().converter.program.value().isEmpty() && !launcher.isUsed())
        words = zn::Session::require().state<zn::kernel::ConverterServers>().wordsForConversion(program, values.input);
    words << program;
    if (values.externalParts)
        words.append(QLatin1String(protocol::option::ExternalParts));
    QStringList options;
    if (needsSurfaces())
        options << zn::kernel::converterOption(setting::KeepBrep, 1);
    if (!settings().convert.pmi)
        options << zn::kernel::converterOption(setting::Pmi, 0);
    if (settings().convert.automaticViews)
        options << zn::kernel::converterOption(setting::AutomaticViews, 1);
    if (settings().convert.uv == zn::ConvertSettings::Uv::Surface)
        options << zn::kernel::converterOption(setting::SurfaceUv, 1);
    if (const int level = settings().mesh.level; level > 0)
        options << zn::kernel::converterOption(setting::MeshLevel, level);
    options << launcher.converterOptions();
    if (!launcher.isUsed() && znJobs::JobScheduler::instance().hasSiblingProcesses())
        options << zn::kernel::converterOption(setting::Threads, 1);
    options << settings().converter.options.value().split(QLatin1Char(' '), Qt::SkipEmptyParts);
    words << referenceWords() << zn::kernel::sandboxWords(settings().convert.sandbox);
    for (const QString& option : options)
        words << QLatin1String(protocol::option::Set) << option;
    return words << values.input << values.output;
}

} // namespace

std::pair<std::string, std::string> znPtxHelper::createProcessCommand(const std::string& input, bool externalParts,
                                                                      const std::string& outputDir)
{
    const zn::TracedCall call("znPtxHelper::createProcessCommand", input, externalParts, outputDir);
    const QString file = QFileInfo(QString::fromStdString(input)).absoluteFilePath();
    const QString output = zn::kernel::takenSceneFile(file, QString::fromStdString(outputDir));
    const zn::kernel::TemplateValues values{file, output, externalParts};
    const zn::kernel::Launcher launcher(settings(), file, output);
    const QStringList words = ownConverter(values).value_or(commonConverter(values, launcher));
    return {zn::kernel::joinCommand(launcher.words() + words).toStdString(), output.toStdString()};
}

std::string znPtxHelper::createStylarConvertCommand(const std::string& input, std::string& convertedFile,
                                                    const std::string& outputDir)
{
    const zn::TracedCall call("znPtxHelper::createStylarConvertCommand", input, outputDir);
    const QString program = settings().converter.updateProgram;
    if (program.isEmpty())
        return std::string();
    const QString file = QFileInfo(QString::fromStdString(input)).absoluteFilePath();
    const QString output = zn::kernel::updatedFile(file, QString::fromStdString(outputDir));
    convertedFile = output.toStdString();
    const QString arguments = settings().converter.updateArguments;
    return zn::kernel::joinCommand(zn::kernel::Launcher(settings(), file, output).words() + QStringList(program) +
                                   zn::kernel::filledTemplate(arguments, {file, output}))
        .toStdString();
}

QString znPtxHelper::getProcessErrorDescription(int exitCode, const std::string& logFile)
{
    const zn::TracedCall call("znPtxHelper::getProcessErrorDescription", exitCode, logFile);
    const QString log = QString::fromStdString(logFile);
    QString text = zn::kernel::exitCodeMeaning(exitCode);
    if (exitCode == znJobs::launcherExitCode)
        text = (text + QLatin1Char(' ') + zn::kernel::wordsOfFailedLauncher()).trimmed();
    if (const QString error = zn::kernel::lastErrorOfLog(log); !error.isEmpty())
        text += QLatin1Char(' ') + error;
    if (QFileInfo::exists(log) && !zn::kernel::goesWithSession(log))
        text += QStringLiteral(" [log: %1]").arg(QFileInfo(log).absoluteFilePath());
    return text;
}

bool znPtxHelper::isConvertedPtxTree(const osg::NodePtr& root)
{
    const zn::TracedCall call("znPtxHelper::isConvertedPtxTree", root);
    return osg::scenefile::converted::isConvertedTree(root);
}

void znPtxHelper::removePtxTag(const osg::NodePtr& root)
{
    const zn::TracedCall call("znPtxHelper::removePtxTag", root);
    if (!osg::scenefile::converted::isConvertedTree(root))
        return;
    std::vector<std::string> tags = osg::tagsOf(root);
    std::erase(tags, osg::scenefile::converted::ConvertedTag);
    osg::setTags(root, std::move(tags));
}
