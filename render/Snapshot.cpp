#include "render/Snapshot.h"

#include "files/OutputFile.h"
#include "geometry/rays/LightColor.h"
#include "render/StudioSet.h"
#include "render/TileCrew.h"
#include "render/studio/HdrFile.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QDir>
#include <QImageWriter>

#include <new>
#include <thread>

namespace render
{

namespace
{

/// Radii of strokes in pixels.
constexpr float lineRadius = 1.0f;
constexpr float pointRadius = 2.0f;

QString text(const char* source)
{
    return QCoreApplication::translate("Snapshot", source);
}

SnapshotError failure(SnapshotFault fault, const QString& message)
{
    return {fault, message, QString()};
}

SnapshotResult failed(SnapshotFault fault, const QString& message)
{
    SnapshotResult result;
    result.error = failure(fault, message);
    return result;
}

SnapshotResult cancelledResult()
{
    return failed(SnapshotFault::Cancelled, text("The picture was cancelled"));
}

bool isWithin(int value, int least, int most)
{
    return value >= least && value <= most;
}

SnapshotError badOption(const SnapshotOptions& options)
{
    const int most = options.limits.maxSide;
    if (!isWithin(options.width, 1, most) || !isWithin(options.height, 1, most) ||
        std::size_t(options.width) * std::size_t(options.height) > options.limits.maxPixels) {
        const QString message = text("A picture of %1x%2 pixels is not possible: each side must be from 1 to %3, and "
                                     "there may be %4 pixels at most");
        return failure(
            SnapshotFault::BadOptions,
            message.arg(options.width).arg(options.height).arg(most).arg(qulonglong(options.limits.maxPixels)));
    }
    if (!isWithin(options.samples, 1, 16))
        return failure(SnapshotFault::BadOptions, text("The samples of a pixel must be from 1 to 16 each way"));
    if (!isWithin(options.ambientSamples, 0, 4096))
        return failure(SnapshotFault::BadOptions, text("The ambient samples of a pixel must be from 0 to 4096"));
    if (!(options.margin >= 0 && options.margin < 0.5f))
        return failure(SnapshotFault::BadOptions, text("The margin must be from 0 to below 0.5"));
    if (options.threads < 0)
        return failure(SnapshotFault::BadOptions, text("The number of threads must not be negative"));
    return {};
}

QString whyNothing(const osg::NodePtr& root, const PartList& list)
{
    if (!root)
        return text("There is nothing to draw: the scene has no root");
    if (list.leftOut != 0)
        return text("There is nothing to draw: no geometry has a transform with finite values");
    return text("There is nothing to draw: the scene has no active geometry with triangles, lines or points");
}

int threadsFor(const SnapshotOptions& options)
{
    const unsigned cores = std::max(std::thread::hardware_concurrency(), 1u);
    return options.threads > 0 ? options.threads : static_cast<int>(cores);
}

StrokeRadii strokeRadii(const Camera& camera, const SnapshotOptions& options)
{
    const float pixelSize = 2 * camera.halfHeightAt({0, 0, 0}) / float(options.height);
    return {lineRadius * pixelSize, pointRadius * pixelSize};
}

QImage paint(const RayScene& scene, const Camera& camera, const PartList& list, const StudioSet* studio,
             const SnapshotOptions& options, Watch& watch)
{
    const Sky sky(scene, options.ambientSamples);
    const Ground ground(list.bounds);
    const bool hasGround =
        !options.eye && options.view == View::Iso && options.backdrop.contactShadow && options.ambientSamples > 0;
    const BackdropLight backdrop(options.backdrop, {options.width, options.height});
    std::optional<studio::StudioShading> shading;
    if (studio)
        shading.emplace(scene, list, studio->materials, studio->environment);
    const Painter painter(scene, camera, sky, hasGround ? &ground : nullptr, shading ? &*shading : nullptr,
                          {options.height, luminance(backdrop.middle())});
    const bool isClear = options.backdrop.isTransparent;
    QImage image(options.width, options.height, isClear ? QImage::Format_ARGB32 : QImage::Format_RGB32);
    if (!image.isNull())
        drawTiles({scene, camera, sky, painter, backdrop, options}, image, threadsFor(options), watch);
    return image;
}

SnapshotResult deviceFailure(const RayDevice& device)
{
    if (device.isOutOfMemory())
        throw std::bad_alloc();
    const QString message = text("The ray tracer reports: %1").arg(QString::fromStdString(device.errorText()));
    return failed(SnapshotFault::RayTracer, message);
}

SnapshotResult renderParts(PartList& list, const StudioSet* studio, const SnapshotOptions& options, Watch& watch)
{
    const Eigen::Vector3d center = list.bounds.center();
    const double scale = moveToStage(list);
    const FrameShape frame = {options.width, options.height, options.margin};
    const std::optional<Camera> chosen =
        options.eye ? cameraOf(*options.eye, {center, scale}, frame) : fitCamera(list, options.view, frame);
    if (!chosen)
        return failed(SnapshotFault::BadOptions, text("The camera has no direction or impossible optics"));
    const Camera& camera = *chosen;
    const RayDevice device(threadsFor(options), watch);
    if (device.hasFailed())
        return deviceFailure(device);
    RayScene scene(device, list, camera.back, strokeRadii(camera, options), watch);
    if (options.eye)
        scene.cut(sectionsOf(*options.eye, {center, scale}));
    if (device.hasFailed())
        return deviceFailure(device);
    if (watch.cancelled())
        return cancelledResult();
    SnapshotResult result;
    result.leftOut = list.leftOut;
    result.image = paint(scene, camera, list, studio, options, watch);
    if (result.image.isNull())
        throw std::bad_alloc();
    return watch.cancelled() ? cancelledResult() : result;
}

SnapshotResult environmentFailure(const files::Error& error)
{
    SnapshotResult result = failed(SnapshotFault::Environment, error.toString());
    result.error.file = error.file;
    return result;
}

QStringList warningsOf(const PartList& list, const StudioSet* studio)
{
    QStringList warnings;
    if (list.leftOut > 0)
        warnings << QCoreApplication::translate("Snapshot",
                                                "%n geometries are not drawn: their places have no finite values",
                                                nullptr, static_cast<int>(list.leftOut));
    return studio ? warnings + studio->materials.warnings() : warnings;
}

/// What the studio look takes away.
SnapshotOptions settled(SnapshotOptions options)
{
    if (options.look == SnapshotLook::Studio)
        options.featureLines = false;
    return options;
}

SnapshotResult renderTree(const osg::NodePtr& root, const SnapshotOptions& options)
{
    Watch watch(options.progress, options.cancel);
    watch.report(0);
    PartList list = collectParts(root, options.limits.maxParts, watch, options.inFront);
    if (watch.cancelled())
        return cancelledResult();
    if (list.tooMany)
        return failed(SnapshotFault::BadOptions,
                      text("The scene has more than %1 geometries to draw").arg(qulonglong(options.limits.maxParts)));
    if (list.parts.empty())
        return failed(SnapshotFault::NothingToDraw, whyNothing(root, list));
    const files::Expected<std::unique_ptr<StudioSet>> studio = studioSetFor(list, options, threadsFor(options));
    if (!studio)
        return environmentFailure(studio.error());
    SnapshotResult result = renderParts(list, studio->get(), options, watch);
    result.warnings = warningsOf(list, studio->get());
    if (!result.error)
        watch.report(1);
    return result;
}

SnapshotError notWritten(const QString& path, const QString& cause)
{
    const QString message = text("The picture \"%1\" could not be written: %2");
    return {SnapshotFault::NotWritten, message.arg(QDir::toNativeSeparators(path), cause), path};
}

SnapshotError writePng(const QImage& image, const QString& path)
{
    QBuffer png;
    QImageWriter writer(&png, "png");
    if (!writer.write(image))
        return notWritten(path, writer.errorString());
    files::OutputFile file(path);
    file.write(png.data().constData(), static_cast<std::uint64_t>(png.size()));
    const files::Expected<void> written = file.commit();
    return written ? SnapshotError() : notWritten(path, written.error().message);
}

} // namespace

SnapshotResult renderSnapshot(const osg::NodePtr& root, const SnapshotOptions& options)
{
    if (const SnapshotError error = badOption(options)) {
        SnapshotResult result;
        result.error = error;
        return result;
    }
    try {
        return renderTree(root, settled(options));
    } catch (const std::bad_alloc&) {
        return failed(SnapshotFault::OutOfMemory, text("There is not enough memory for the picture"));
    }
}

std::optional<QString> environmentComplaint(const QString& file)
{
    const auto read = studio::readHdrFile(file, SnapshotLimits().maxEnvironmentPixels);
    return read ? std::nullopt : std::optional(read.error().toString());
}

SnapshotError writeSnapshot(const osg::NodePtr& root, const QString& path, const SnapshotOptions& options,
                            QStringList* warnings)
{
    SnapshotResult result = renderSnapshot(root, options);
    if (warnings)
        *warnings = result.warnings;
    if (!result.error)
        return writePng(result.image, path);
    if (result.error.file.isEmpty())
        result.error.file = path;
    return result.error;
}

} // namespace render
