#include "tools/znimport/Outputs.h"

#include "standalone/export/GlbWriter.h"
#include "standalone/render/Snapshot.h"
#include "standalone/scenefile/SceneFile.h"
#include "standalone/session/SceneExtras.h"
#include "standalone/session/znStandaloneSession.h"
#include "standalone/znKernel/KernelState.h"

#include <QFileInfo>

namespace outputs
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

Result writeScene(const QString& file, const osg::NodePtr& scene)
{
    Result result;
    if (hasExtension(file, "osb")) {
        const osg::SceneFileWriteResult written = osg::writeSceneFile(scene, file);
        for (const osg::SceneFileWarning& warning : written.warnings)
            result.warnings.append(file + QStringLiteral(": ") + warning.message());
        if (written.error)
            result.error = written.error->toString();
        return result;
    }
    glb::WriteOptions options;
    options.occlusionAsColors =
        znStandaloneSession::require().settings().isOn(QStringLiteral("export.occlusionAsColors"));
    const glb::WriteResult written = glb::write(scene, file, options);
    for (const QString& warning : written.warnings)
        result.warnings.append(file + QStringLiteral(": ") + warning);
    if (written.error)
        result.error = written.error->toString();
    return result;
}

std::optional<QString> writePicture(const CommandLine& line, const osg::NodePtr& scene,
                                    const std::optional<render::Eye>& eye,
                                    const std::function<void(unsigned)>& progress, const std::atomic<bool>& cancel)
{
    render::SnapshotOptions options;
    options.eye = eye;
    const auto size = sizeFromText(line.snapshotSize).value();
    options.width = size.first;
    options.height = size.second;
    options.view = render::viewFromText(line.snapshotView).view.value();
    options.progress = [&progress](double done) { progress(static_cast<unsigned>(100 * done)); };
    options.cancel = &cancel;
    const render::SnapshotError error = render::writeSnapshot(scene, line.snapshotFile, options);
    if (!error)
        return std::nullopt;
    return error.file.isEmpty() ? line.snapshotFile + QStringLiteral(": ") + error.message
                                : error.file + QStringLiteral(": ") + error.message;
}

/// Nothing when the picture is to be fitted.
std::optional<render::Eye> eyeFor(const CommandLine& line, const zn::CameraTree& cameras)
{
    const osg::UberCameraPtr camera = cameras.view();
    if (!camera || line.isViewGiven)
        return std::nullopt;
    return render::Eye{cameras.placementOf(camera), camera->getProjection() == osg::UberCameraBase::Perspective,
                       camera->getFieldOfView(), camera->getHeight()};
}

} // namespace

std::optional<QString> complaint(const CommandLine& line)
{
    if (!line.outputFile.isEmpty() && !hasExtension(line.outputFile, "glb") && !hasExtension(line.outputFile, "osb"))
        return QStringLiteral("--output writes .glb and .osb files, not '%1'").arg(line.outputFile);
    if (!line.snapshotFile.isEmpty() && !hasExtension(line.snapshotFile, "png"))
        return QStringLiteral("--snapshot writes .png files, not '%1'").arg(line.snapshotFile);
    if (!sizeFromText(line.snapshotSize))
        return QStringLiteral("--size wants WIDTHxHEIGHT in pixels, not '%1'").arg(line.snapshotSize);
    const render::ViewChoice view = render::viewFromText(line.snapshotView);
    return view.view ? std::nullopt : std::optional(QStringLiteral("--view: ") + view.error);
}

Result write(const CommandLine& line, znStandaloneSession& session, const std::function<void(unsigned)>& progress,
             const std::atomic<bool>& cancel)
{
    const zn::SceneWithExtras scene(session);
    Result result;
    if (!line.outputFile.isEmpty())
        result = writeScene(line.outputFile, scene.root());
    if (!result.error && !line.snapshotFile.isEmpty())
        result.error = writePicture(line, scene.root(), eyeFor(line, session.kernel().cameras), progress, cancel);
    return result;
}

} // namespace outputs
