#include "standalone/loading/TreeReading.h"

#include "host/znUtils/znLog.h"
#include "standalone/formats/SceneReaders.h"
#include "standalone/loading/SceneExtras.h"
#include "standalone/session/Session.h"

namespace zn
{

namespace
{

formats::ReadOptions readOptions(const Settings& settings)
{
    formats::ReadOptions options;
    options.millimetresPerUnit = settings.number(QStringLiteral("mesh.unit"));
    options.upAxis =
        settings.text(QStringLiteral("mesh.up")) == QLatin1String("y") ? formats::UpAxis::Y : formats::UpAxis::Z;
    options.vrmlInMetres = settings.isOn(QStringLiteral("mesh.wrlInMetres"));
    return options;
}

void log(const formats::ReadNote& note)
{
    znLog::error(note.toString().toUtf8().constData());
}

} // namespace

std::optional<osg::NodePtr> readTree(Session& session, const QString& file)
{
    const formats::ReadResult result =
        session.state<formats::SceneReaders>().read(file, readOptions(session.settings()));
    for (const formats::ReadNote& warning : result.warnings)
        log(warning);
    if (result.error) {
        log(*result.error);
        return std::nullopt;
    }
    for (const QString& complaint : takeExtras(session, result.root))
        log({complaint, file, {}});
    return result.root;
}

} // namespace zn
