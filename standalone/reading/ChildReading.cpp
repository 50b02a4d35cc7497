#include "standalone/reading/ChildReading.h"

#include "files/ReadReport.h"
#include "files/ReadRequest.h"
#include "files/ReadTask.h"
#include "files/scenefile/SceneFile.h"
#include "protocol/FileNames.h"
#include "protocol/Options.h"
#include "standalone/loading/SceneFilePolicy.h"
#include "standalone/session/Session.h"

#include <QFile>

namespace zn::reading
{

namespace
{

std::optional<files::ReadReport> reportOf(const ReaderProcess& process)
{
    constexpr qint64 most = 16 << 20;
    QFile file(process.output() + QLatin1String(protocol::NotesSuffix));
    if (!file.open(QIODevice::ReadOnly) || file.size() > most)
        return std::nullopt;
    return files::ReadReport::fromBytes(file.readAll());
}

osg::NodePtr readTree(Session& session, const files::ReadTask& task, const QString& file)
{
    const files::Result<osg::NodePtr> result = osg::scenefile::readSceneFile(
        file, loading::sceneFileOptions(loading::isMapped(&session, file), task.options().limits.maxMemory));
    if (!result)
        task.fail(result.error().code, result.error().message, result.error().place);
    return result.value();
}

osg::NodePtr readByChild(Session& session, files::ReadTask& task, const QString& program)
{
    ReaderProcess process(session, program);
    files::ReadOptions options = task.options();
    options.limits.maxMemory = memoryOfNextRead(session, options.limits.maxMemory);
    const QString output = QStringLiteral("scene") + QLatin1String(protocol::SceneFileSuffix);
    if (const auto run = process.run(
            {protocol::option::ReadMesh, task.path(), output, files::wordsOf(options), options.limits.maxMemory});
        !run)
        task.fail(run.error());
    const std::optional<files::ReadReport> told = reportOf(process);
    if (told)
        task.adoptWarnings(told->warnings);
    if (told && told->error)
        task.fail(*told->error);
    if (!process.hasSucceeded() || !told)
        task.fail(process.failure());
    return readTree(session, task, process.output());
}

} // namespace

osg::NodePtr readMesh(Session& session, files::ReadTask& task, const files::ReadFunction& inProcess,
                      const QString& program)
{
    return readsInChild(session, program) ? readByChild(session, task, program) : inProcess(task);
}

} // namespace zn::reading
