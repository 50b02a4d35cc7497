#include "tools/znimport/ChosenSettings.h"

#include "protocol/Options.h"
#include "standalone/session/Settings.h"
#include "tools/znimport/CommandLine.h"

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
    for (const auto& [name, value] : line.settings)
        if (!error)
            error = settings.set(name, value);
    if (!line.bomFile.isEmpty())
        settings.converter.options.set(QStringLiteral("%1=1 %2").arg(QLatin1String(protocol::setting::ExactMeasures),
                                                                     settings.converter.options.value()));
    return error ? error : temporaryFolderComplaint(settings.files.temporaryFolder);
}

} // namespace znimport
