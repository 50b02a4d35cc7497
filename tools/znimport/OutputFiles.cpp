#include "tools/znimport/OutputFiles.h"

#include "files/glb/GlbWriter.h"
#include "files/scenefile/SceneFile.h"
#include "render/Snapshot.h"
#include "standalone/loading/SceneExtras.h"
#include "standalone/startup/StandaloneSession.h"
#include "standalone/znOpenSGUberCamera/SessionCameras.h"
#include "standalone/znVariants/VariantSets.h"
#include "tools/znimport/KeptLook.h"
#include "tools/znimport/VariantFileNames.h"
#include "tools/znimport/VariantSelection.h"

#include <QDir>
#include <QFileInfo>

namespace znimport
{

namespace
{

bool hasExtension(const QString& file, const char* extension)
{
    return QFileInfo(file).suffix().compare(QLatin1String(extension), Qt::CaseInsensitive) == 0;
}

/// The two numbers of "WIDTHxHEIGHT".
std::optional<std::pair<int, int>> sizeFromText(const QString& text)
{
    const QStringList numbers = text.toLower().split(QLatin1Char('x'));
    bool widthOk = false;
    bool heightOk = false;
    if (numbers.size() != 2)
        return std::nullopt;
    const int width = numbers[0].toInt(&widthOk);
    const int height = numbers[1].toInt(&heightOk);
    if (!widthOk || !heightOk || width < 1 || height < 1)
        return std::nullopt;
    return std::pair(width, height);
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
    if (!(line.unit.isEmpty() && line.up.isEmpty()) && !hasExtension(line.outputFile, "glb"))
        return QStringLiteral("--unit and --up are for .glb files, and --output names none");
    return std::nullopt;
}

void takeWarnings(const std::vector<files::Note>& warnings, WrittenOutputs& result)
{
    for (const files::Note& warning : warnings)
        result.warnings.append(warning.toString());
}

WrittenOutputs writeScene(const CommandLine& line, const osg::NodePtr& scene)
{
    const QString& file = line.outputFile;
    WrittenOutputs result;
    if (hasExtension(file, "osb")) {
        const files::Result<std::uint64_t> written = osg::scenefile::writeSceneFile(scene, file);
        takeWarnings(written.warnings, result);
        if (!written)
            result.error = written.error().toStringWithCode();
        return result;
    }
    files::glb::WriteOptions options;
    options.millimetresPerUnit = millimetresPerUnit(line.unit).value();
    options.upAxis = upAxis(line.up).value();
    options.occlusionAsColors = zn::StandaloneSession::require().settings().exports.occlusionAsColors;
    const files::Result<files::glb::Written> written = files::glb::write(scene, file, options);
    takeWarnings(written.warnings, result);
    if (!written)
        result.error = written.error().toString();
    return result;
}

/// Nothing when the picture is to be fitted.
std::optional<render::Eye> eyeFor(const CommandLine& line, const zn::cameras::CameraTree& cameras)
{
    const osg::UberCameraPtr camera = cameras.view();
    if (!camera || line.isViewGiven)
        return std::nullopt;
    return render::Eye{cameras.placementOf(camera), camera->getProjection() == osg::UberCameraBase::Perspective,
                       camera->getFieldOfView(), camera->getHeight()};
}

/// What pictures are drawn with.
struct Drawing {
    const CommandLine& line;
    zn::StandaloneSession& session;
    osg::NodePtr scene;
    const std::function<void(unsigned)>& progress;
    const std::atomic<bool>& cancel;
};

render::SnapshotOptions optionsOf(const Drawing& drawing)
{
    render::SnapshotOptions options;
    options.eye = eyeFor(drawing.line, zn::cameras::sessionCameras(drawing.session));
    const auto size = sizeFromText(drawing.line.snapshotSize).value();
    options.width = size.first;
    options.height = size.second;
    options.view = render::viewFromText(drawing.line.snapshotView).view.value();
    options.progress = [&drawing](double done) { drawing.progress(static_cast<unsigned>(100 * done)); };
    options.cancel = &drawing.cancel;
    return options;
}

void draw(const Drawing& drawing, const QString& file, WrittenOutputs& result)
{
    const render::SnapshotError error = render::writeSnapshot(drawing.scene, file, optionsOf(drawing));
    if (error)
        result.error = (error.file.isEmpty() ? file : error.file) + QStringLiteral(": ") + error.message;
    else
        result.files << file;
}

/// A picture of each set, applied to the scene as it is now.
void drawVariants(const Drawing& drawing, WrittenOutputs& result)
{
    const QDir folder(drawing.line.variantFolder);
    if (!folder.mkpath(QStringLiteral("."))) {
        result.error = QStringLiteral("%1: the folder cannot be made").arg(folder.path());
        return;
    }
    const QStringList sets = zn::variantSetNames(drawing.session);
    if (sets.isEmpty())
        result.warnings << QStringLiteral("there are no variant sets to draw");
    const QStringList files = variantFileNames(sets);
    for (int i = 0; i < sets.size() && !result.error; ++i) {
        const KeptLook look(drawing.session);
        const ChosenVariantSet chosen = chooseVariantSet(drawing.session, sets[i]);
        result.warnings << chosen.warnings;
        draw(drawing, folder.filePath(files[i] + QStringLiteral(".png")), result);
    }
}

} // namespace

std::optional<QString> outputComplaint(const CommandLine& line)
{
    if (!line.outputFile.isEmpty() && !hasExtension(line.outputFile, "glb") && !hasExtension(line.outputFile, "osb"))
        return QStringLiteral("--output writes .glb and .osb files, not '%1'").arg(line.outputFile);
    if (auto complaint = spaceComplaint(line))
        return complaint;
    if (!line.snapshotFile.isEmpty() && !hasExtension(line.snapshotFile, "png"))
        return QStringLiteral("--snapshot writes .png files, not '%1'").arg(line.snapshotFile);
    if (QFileInfo(line.variantFolder).isFile())
        return QStringLiteral("--snapshot-variants wants a folder, and '%1' is a file").arg(line.variantFolder);
    if (!line.reportFile.isEmpty() && !hasExtension(line.reportFile, "json"))
        return QStringLiteral("--report writes .json files, not '%1'").arg(line.reportFile);
    if (!sizeFromText(line.snapshotSize))
        return QStringLiteral("--size wants WIDTHxHEIGHT in pixels, not '%1'").arg(line.snapshotSize);
    const render::ViewChoice view = render::viewFromText(line.snapshotView);
    return view.view ? std::nullopt : std::optional(QStringLiteral("--view: ") + view.error);
}

WrittenOutputs writeOutputs(const CommandLine& line, zn::StandaloneSession& session,
                            const std::function<void(unsigned)>& progress, const std::atomic<bool>& cancel)
{
    const zn::SceneWithExtras scene(session);
    WrittenOutputs result;
    if (!line.outputFile.isEmpty())
        result = writeScene(line, scene.root());
    if (!line.outputFile.isEmpty() && !result.error)
        result.files << line.outputFile;
    const Drawing drawing{line, session, scene.root(), progress, cancel};
    if (!result.error && !line.snapshotFile.isEmpty())
        draw(drawing, line.snapshotFile, result);
    if (!result.error && !line.variantFolder.isEmpty())
        drawVariants(drawing, result);
    return result;
}

} // namespace znimport
