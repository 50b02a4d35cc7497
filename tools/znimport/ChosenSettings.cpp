#include "tools/znimport/ChosenSettings.h"

#include "protocol/Options.h"
#include "standalone/session/Settings.h"
#include "tools/znimport/CommandLine.h"

namespace znimport
{

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
    return error;
}

} // namespace znimport
