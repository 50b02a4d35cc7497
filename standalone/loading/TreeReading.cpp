#include "standalone/loading/TreeReading.h"

#include "files/SceneReaders.h"
#include "host/znUtils/znLog.h"
#include "standalone/loading/ReferenceCheck.h"
#include "standalone/loading/SceneExtras.h"
#include "standalone/loading/SceneFilePolicy.h"
#include "standalone/session/Session.h"

namespace zn::loading
{

namespace
{

files::ReadOptions readOptions(Session& session, const QString& file)
{
    const Settings& settings = session.settings();
    files::ReadOptions options;
    options.references = referencePolicy(session);
    options.mapsFile = isMapped(&session, file);
    options.limits.maxMemory = std::uint64_t(settings.read.memory.value()) << 20;
    options.millimetresPerUnit = settings.mesh.unit;
    options.upAxis = settings.mesh.up == MeshSettings::Axis::Y ? files::UpAxis::Y : files::UpAxis::Z;
    options.vrmlInMetres = settings.mesh.wrlInMetres;
    options.level = settings.mesh.level;
    return options;
}

void log(const files::Note& note)
{
    znLog::error(note.toString().toUtf8().constData());
}

} // namespace

std::optional<osg::NodePtr> readTree(Session& session, const QString& file)
{
    if (const auto refusal = refusalOfDocument(session, file)) {
        log({files::textOf(*refusal), file, {}});
        return std::nullopt;
    }
    const files::ReadResult result = session.state<files::SceneReaders>().read(file, readOptions(session, file));
    for (const files::Note& warning : result.warnings)
        log(warning);
    if (!result) {
        log(result.error());
        return std::nullopt;
    }
    for (const QString& complaint : takeExtras(session, result.value()))
        log({complaint, file, {}});
    return result.value();
}

} // namespace zn::loading
