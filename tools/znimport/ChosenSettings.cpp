#include "tools/znimport/ChosenSettings.h"

#include "protocol/Options.h"
#include "standalone/session/Settings.h"
#include "tools/znimport/CommandLine.h"

#include <QDir>
#include <QFileInfo>

namespace znimport
{

namespace
{

// The jobs would take the session's own folder in its stead.
std::optional<QString> temporaryFolderComplaint(const QString& folder)
{
    const QFileInfo info(folder);
    if (folder.isEmpty() || (info.isDir() && info.isWritable()))
        return std::nullopt;
    return QStringLiteral("files.temporaryFolder: %1 is no folder that takes files").arg(folder);
}

/// Gives a sentence when `kind` is none.
std::optional<QString> chooseUv(const QString& kind, zn::Settings& settings)
{
    const bool isSurface = kind == QLatin1String("surface");
    if (!isSurface && settings.mesh.uv.setText(kind))
        return QStringLiteral("--uv wants auto, box, surface or none, not '%1'").arg(kind);
    if (isSurface)
        settings.mesh.uv.set(zn::MeshSettings::Uv::Auto);
    settings.convert.uv.set(isSurface ? zn::ConvertSettings::Uv::Surface : zn::ConvertSettings::Uv::None);
    return std::nullopt;
}

} // namespace

std::optional<QString> applySettings(const CommandLine& line, zn::Settings& settings)
{
    std::optional<QString> error;
    if (!line.jobs.isNull())
        error = settings.processes.most.setText(line.jobs);
    if (!error && line.assetFolder) {
        settings.assets.folder.set(*line.assetFolder);
        settings.scene.applyMaterialAssets.set(true);
    }
    if (!error && line.uv)
        error = chooseUv(*line.uv, settings);
    settings.files.referenceFolders.set(line.referenceFolders.join(QDir::listSeparator()));
    for (const auto& [name, value] : line.settings)
        if (!error)
            error = settings.set(name, value);
    if (!line.bomFile.isEmpty())
        settings.converter.options.set(QStringLiteral("%1=1 %2").arg(QLatin1String(protocol::setting::ExactMeasures),
                                                                     settings.converter.options.value()));
    for (const QString& folder : line.referenceFolders)
        if (!error && (!QFileInfo(folder).isDir() || folder.contains(QDir::listSeparator())))
            error = QStringLiteral("--allow-references wants a folder without a colon in its name, and '%1' is none")
                        .arg(folder);
    return error ? error : temporaryFolderComplaint(settings.files.temporaryFolder);
}

} // namespace znimport
