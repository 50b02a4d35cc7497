#include "tools/znimport/OutputFiles.h"

#include "files/scenefile/SceneFile.h"
#include "standalone/loading/SceneExtras.h"
#include "standalone/startup/StandaloneSession.h"
#include "tools/znimport/GlbOptions.h"
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

void takeWarnings(const std::vector<files::Note>& warnings, WrittenOutputs& result)
{
    for (const files::Note& warning : warnings)
        result.warnings.append(warning.toString());
}

/// What became of triangles, and of how far surfaces are off by it. Files of levels are outputs, too.
void tellLevels(const files::glb::Written& written, const QString& file, WrittenOutputs& result)
{
    std::uint64_t before = written.trianglesBefore;
    for (std::size_t level = 0; level < written.levels.size(); ++level) {
        const files::glb::WrittenLevel& told = written.levels[level];
        if (told.path != file)
            result.files << told.path;
        if (level > 0 || told.triangles < before)
            result.warnings << QStringLiteral("%1: %2%3 of %4 triangles; no surface is off by more than %5 mm")
                                   .arg(told.path)
                                   .arg(level > 0 ? QStringLiteral("level %1 has ").arg(level) : QString())
                                   .arg(told.triangles)
                                   .arg(before)
                                   .arg(told.error);
        before = level == 0 ? told.triangles : before;
    }
    if (written.levelsLeftOut > 0)
        result.warnings << QStringLiteral("%1: %2 levels of meshes were left out, as they would not have a tenth fewer "
                                          "triangles than the ones before")
                               .arg(file)
                               .arg(written.levelsLeftOut);
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
    tellLevels(written.value(), file, result);
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
    const bool writesGlb = hasExtension(line.outputFile, "glb") || !line.variantFilesFolder.isEmpty();
    if (auto complaint = glbComplaint(line, writesGlb))
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
