#include "tools/znimport/Pictures.h"

#include "files/scenefile/ConvertedTree.h"
#include "render/Background.h"
#include "render/Snapshot.h"
#include "scene/ViewTags.h"
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

constexpr const char* savedPrefix = "saved:";

bool wantsSavedView(const CommandLine& line)
{
    return line.snapshotView.startsWith(QLatin1String(savedPrefix), Qt::CaseInsensitive);
}

QString savedViewName(const CommandLine& line)
{
    return line.snapshotView.mid(static_cast<int>(qstrlen(savedPrefix)));
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

render::BackgroundChoice backgroundOf(const CommandLine& line)
{
    if (line.background.isEmpty())
        return {render::Backdrop(), QString()};
    return render::backgroundFromText(line.background);
}

/// The sentence that says what is wrong with the light and the background that are wanted.
std::optional<QString> surroundingsComplaint(const CommandLine& line)
{
    const bool isDrawn = !line.snapshotFile.isEmpty() || !line.variantFolder.isEmpty();
    if (!isDrawn && !(line.look.isEmpty() && line.environmentFile.isEmpty() && line.background.isEmpty()))
        return QStringLiteral("--look, --environment and --background are for pictures, and --snapshot names none");
    if (!line.look.isEmpty())
        if (const render::LookChoice look = render::lookFromText(line.look); !look.look)
            return QStringLiteral("--look: ") + look.error;
    if (!line.environmentFile.isEmpty() &&
        render::lookFromText(line.look).look == std::optional(render::SnapshotLook::Plain))
        return QStringLiteral("--environment is for pictures with --look studio");
    if (!line.environmentFile.isEmpty())
        if (const auto error = render::environmentComplaint(line.environmentFile))
            return QStringLiteral("--environment: ") + *error;
    const render::BackgroundChoice background = backgroundOf(line);
    return background.backdrop ? std::nullopt : std::optional(QStringLiteral("--background: ") + background.error);
}

/// How the session looks at the scene.
struct Look {
    render::Eye eye;
    bool areAnnotationsInFront = false;
};

/// Nothing when the session looks from nowhere.
std::optional<Look> sessionLook(zn::StandaloneSession& session)
{
    const zn::cameras::CameraTree& cameras = zn::cameras::sessionCameras(session);
    const osg::UberCameraPtr camera = cameras.view();
    if (!camera)
        return std::nullopt;
    osg::ViewFacts facts = osg::viewFactsOf(camera);
    const bool isPerspective = camera->getProjection() == osg::UberCameraBase::Perspective;
    return Look{{cameras.placementOf(camera), isPerspective, camera->getFieldOfView(), camera->getHeight(),
                 facts.aspect, std::move(facts.sections)},
                facts.areAnnotationsInFront};
}

/// What pictures are drawn with.
struct Drawing {
    const CommandLine& line;
    zn::StandaloneSession& session;
    osg::NodePtr scene;
    const std::function<void(unsigned)>& progress;
    const std::atomic<bool>& cancel;
    render::Backdrop backdrop;
    std::optional<Look> savedLook = std::nullopt; ///< of the saved view that the command line names
};

/// Nothing when the picture is to be fitted.
std::optional<Look> lookFor(const Drawing& drawing)
{
    if (drawing.savedLook || drawing.line.isViewGiven)
        return drawing.savedLook;
    return sessionLook(drawing.session);
}

render::SnapshotLook snapshotLook(const Drawing& drawing)
{
    if (!drawing.line.look.isEmpty())
        return render::lookFromText(drawing.line.look).look.value_or(render::SnapshotLook::Plain);
    return drawing.session.settings().pictures.look == zn::PictureSettings::Look::Studio ? render::SnapshotLook::Studio
                                                                                         : render::SnapshotLook::Plain;
}

render::SnapshotOptions optionsOf(const Drawing& drawing)
{
    render::SnapshotOptions options;
    std::optional<Look> look = lookFor(drawing);
    if (drawing.line.areAnnotationsInFront || (look && look->areAnnotationsInFront))
        options.inFront = osg::scenefile::converted::PmiTag;
    if (look)
        options.eye = std::move(look->eye);
    const auto size = sizeFromText(drawing.line.snapshotSize).value();
    options.width = size.first;
    options.height = size.second;
    options.view = render::viewFromText(drawing.line.snapshotView).view.value_or(render::View::Iso);
    options.look = snapshotLook(drawing);
    options.environmentFile = drawing.line.environmentFile;
    options.backdrop = drawing.backdrop;
    options.progress = [&drawing](double done) { drawing.progress(static_cast<unsigned>(100 * done)); };
    options.cancel = &drawing.cancel;
    return options;
}

void draw(const Drawing& drawing, const QString& file, DrawnPictures& result)
{
    const render::SnapshotOptions options = optionsOf(drawing);
    if (!options.environmentFile.isEmpty() && options.look != render::SnapshotLook::Studio)
        result.warnings << QStringLiteral("--environment has no effect without --look studio");
    QStringList warnings;
    const render::SnapshotError error = render::writeSnapshot(drawing.scene, file, options, &warnings);
    for (const QString& warning : warnings)
        result.warnings << file + QStringLiteral(": ") + warning;
    if (error)
        result.error = (error.file.isEmpty() ? file : error.file) + QStringLiteral(": ") + error.message;
    else
        result.files << file;
}

/// A picture of each set, applied to the scene as it is now.
void drawVariants(const Drawing& drawing, DrawnPictures& result)
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

/// Applies the set of the saved view and looks from its viewpoint, if the command line names one.
void takeSavedView(Drawing& drawing, DrawnPictures& result)
{
    if (!wantsSavedView(drawing.line))
        return;
    const QString name = savedViewName(drawing.line);
    zn::cameras::sessionCameras(drawing.session).look(0);
    const ChosenVariantSet chosen = chooseVariantSet(drawing.session, name);
    result.warnings << chosen.warnings;
    drawing.savedLook = sessionLook(drawing.session);
    if (chosen.error)
        result.error = QStringLiteral("--view: ") + *chosen.error;
    else if (!drawing.savedLook)
        result.error = QStringLiteral("--view: the variant set '%1' has no viewpoint").arg(name);
}

} // namespace

std::optional<QString> pictureComplaint(const CommandLine& line)
{
    if (!line.snapshotFile.isEmpty() && QFileInfo(line.snapshotFile).suffix().toLower() != QLatin1String("png"))
        return QStringLiteral("--snapshot writes .png files, not '%1'").arg(line.snapshotFile);
    if (QFileInfo(line.variantFolder).isFile())
        return QStringLiteral("--snapshot-variants wants a folder, and '%1' is a file").arg(line.variantFolder);
    if (!sizeFromText(line.snapshotSize))
        return QStringLiteral("--size wants WIDTHxHEIGHT in pixels, not '%1'").arg(line.snapshotSize);
    if (const auto complaint = surroundingsComplaint(line))
        return complaint;
    if (wantsSavedView(line))
        return savedViewName(line).isEmpty() ? std::optional(QStringLiteral("--view: saved: wants the name of a view"))
                                             : std::nullopt;
    const render::ViewChoice view = render::viewFromText(line.snapshotView);
    return view.view ? std::nullopt
                     : std::optional(QStringLiteral("--view: ") + view.error + QStringLiteral(", or saved:NAME"));
}

DrawnPictures drawPictures(const CommandLine& line, zn::StandaloneSession& session, const osg::NodePtr& scene,
                           const std::function<void(unsigned)>& progress, const std::atomic<bool>& cancel)
{
    DrawnPictures result;
    if (line.snapshotFile.isEmpty() && line.variantFolder.isEmpty())
        return result;
    render::BackgroundChoice background = backgroundOf(line);
    if (!background.backdrop) {
        result.error = background.error;
        return result;
    }
    Drawing drawing{line, session, scene, progress, cancel, std::move(*background.backdrop)};
    {
        const KeptLook look(session);
        takeSavedView(drawing, result);
        if (!result.error && !line.snapshotFile.isEmpty())
            draw(drawing, line.snapshotFile, result);
    }
    if (!result.error && !line.variantFolder.isEmpty())
        drawVariants(drawing, result);
    return result;
}

} // namespace znimport
