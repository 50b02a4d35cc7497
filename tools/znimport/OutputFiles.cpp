#include "tools/znimport/OutputFiles.h"

#include "files/glb/GlbWriter.h"
#include "files/scenefile/SceneFile.h"
#include "standalone/loading/SceneExtras.h"
#include "standalone/startup/StandaloneSession.h"
#include "tools/znimport/Pictures.h"
#include "tools/znimport/VariantFiles.h"

#include <QFileInfo>

namespace znimport
{

namespace
{

bool hasExtension(const QString& file, const char* extension)
{
    return QFileInfo(file).suffix().compare(QLatin1String(extension), Qt::CaseInsensitive) == 0;
}

/// A word of `--unit` and what it means.
struct Unit {
    const char* name;
    double millimetres;
};

constexpr Unit units[] = {{"mm", 1}, {"cm", 10}, {"m", 1000}, {"in", 25.4}, {"ft", 304.8}};

std::optional<double> millimetresPerUnit(const QString& name)
{
    for (const Unit& unit : units)
        if (name.isEmpty() ? unit.millimetres == 1000 : name == QLatin1String(unit.name))
            return unit.millimetres;
    return std::nullopt;
}

std::optional<files::glb::UpAxis> upAxis(const QString& name)
{
    if (name.isEmpty() || name.compare(QLatin1String("y"), Qt::CaseInsensitive) == 0)
        return files::glb::UpAxis::Y;
    return name.compare(QLatin1String("z"), Qt::CaseInsensitive) == 0 ? std::optional(files::glb::UpAxis::Z)
                                                                      : std::nullopt;
}

std::optional<QString> spaceComplaint(const CommandLine& line)
{
    if (!millimetresPerUnit(line.unit))
        return QStringLiteral("--unit wants mm, cm, m, in or ft, not '%1'").arg(line.unit);
    if (!upAxis(line.up))
        return QStringLiteral("--up wants y or z, not '%1'").arg(line.up);
    const bool writesGlb = hasExtension(line.outputFile, "glb") || !line.variantFilesFolder.isEmpty();
    if (!(line.unit.isEmpty() && line.up.isEmpty()) && !writesGlb)
        return QStringLiteral("--unit and --up are for .glb files, and --output names none");
    if (line.scaleIntoVertices && !writesGlb)
        return QStringLiteral("--scale-into-vertices is for .glb files, and --output names none");
    if (line.web && !writesGlb)
        return QStringLiteral("--web is for .glb files, and --output names none");
    return std::nullopt;
}

void takeWarnings(const std::vector<files::Note>& warnings, WrittenOutputs& result)
{
    for (const files::Note& warning : warnings)
        result.warnings.append(warning.toString());
}

files::glb::Hidden hiddenOf(zn::ExportSettings::Hidden hidden)
{
    using Told = zn::ExportSettings::Hidden;
    return hidden == Told::Keep       ? files::glb::Hidden::Keep
           : hidden == Told::LeaveOut ? files::glb::Hidden::LeaveOut
                                      : files::glb::Hidden::Shrink;
}

/// All steps, within 0.05 mm.
files::glb::PackOptions webOptions()
{
    files::glb::PackOptions options;
    options.quantize = true;
    options.normalBits = 8;
    options.weld = true;
    options.reorder = true;
    options.compress = true;
    return options;
}

/// What the command line and the settings ask of GLB files.
files::glb::WriteOptions glbOptions(const CommandLine& line, zn::StandaloneSession& session)
{
    files::glb::WriteOptions options;
    options.millimetresPerUnit = millimetresPerUnit(line.unit).value();
    options.upAxis = upAxis(line.up).value();
    options.occlusionAsColors = session.settings().exports.occlusionAsColors;
    options.fold = session.settings().exports.fold;
    options.hidden = hiddenOf(session.settings().exports.hidden);
    options.scaleIntoVertices = line.scaleIntoVertices || session.settings().exports.scaleIntoVertices;
    if (line.web)
        options.packing = webOptions();
    return options;
}

WrittenOutputs writeGlb(const osg::NodePtr& scene, const QString& file, const files::glb::WriteOptions& options)
{
    WrittenOutputs result;
    const files::Result<files::glb::Written> written = files::glb::write(scene, file, options);
    takeWarnings(written.warnings, result);
    if (!written) {
        result.error = written.error().toString();
        return result;
    }
    result.files << file;
    if (written->error > 0)
        result.warnings << QStringLiteral("%1: no vertex was moved by more than %2 mm").arg(file).arg(written->error);
    return result;
}

WrittenOutputs writeScene(const CommandLine& line, zn::StandaloneSession& session, const osg::NodePtr& scene)
{
    const QString& file = line.outputFile;
    if (!hasExtension(file, "osb"))
        return writeGlb(scene, file, glbOptions(line, session));
    WrittenOutputs result;
    const files::Result<std::uint64_t> written = osg::scenefile::writeSceneFile(scene, file);
    takeWarnings(written.warnings, result);
    if (written)
        result.files << file;
    else
        result.error = written.error().toStringWithCode();
    return result;
}

void append(WrittenOutputs& result, const WrittenOutputs& more)
{
    result.error = more.error;
    result.warnings << more.warnings;
    result.files << more.files;
}

} // namespace

std::optional<QString> outputComplaint(const CommandLine& line)
{
    if (!line.outputFile.isEmpty() && !hasExtension(line.outputFile, "glb") && !hasExtension(line.outputFile, "osb"))
        return QStringLiteral("--output writes .glb and .osb files, not '%1'").arg(line.outputFile);
    if (QFileInfo(line.variantFilesFolder).isFile())
        return QStringLiteral("--variant-files wants a folder, and '%1' is a file").arg(line.variantFilesFolder);
    if (auto complaint = spaceComplaint(line))
        return complaint;
    if (!line.reportFile.isEmpty() && !hasExtension(line.reportFile, "json"))
        return QStringLiteral("--report writes .json files, not '%1'").arg(line.reportFile);
    return pictureComplaint(line);
}

std::optional<QString> folderComplaint(const CommandLine& line)
{
    for (const QString& file : {line.outputFile, line.snapshotFile, line.reportFile, line.bomFile, line.keptDocument}) {
        const QFileInfo folder(QFileInfo(file).path());
        if (file.isEmpty() || folder.isDir())
            continue;
        return QStringLiteral("%1 cannot be written: %2")
            .arg(file, folder.exists() ? QStringLiteral("%1 is no folder").arg(folder.filePath())
                                       : QStringLiteral("there is no folder %1").arg(folder.filePath()));
    }
    return std::nullopt;
}

WrittenOutputs writeOutputs(const CommandLine& line, zn::StandaloneSession& session,
                            const std::function<void(unsigned)>& progress, const std::atomic<bool>& cancel)
{
    const zn::SceneWithExtras scene(session);
    WrittenOutputs result;
    if (!line.outputFile.isEmpty())
        append(result, writeScene(line, session, scene.root()));
    if (!result.error && !line.variantFilesFolder.isEmpty()) {
        files::glb::WriteOptions options = glbOptions(line, session);
        options.variants = false;
        append(result, writeVariantFiles(line, session,
                                         [&](const QString& file) { return writeGlb(scene.root(), file, options); }));
    }
    if (result.error)
        return result;
    const DrawnPictures pictures = drawPictures(line, session, scene.root(), progress, cancel);
    append(result, {pictures.error, pictures.warnings, pictures.files});
    return result;
}

} // namespace znimport
