#include "standalone/startup/BuiltInReaders.h"

#include "files/ReadTask.h"
#include "files/meshes/MeshReaders.h"
#include "files/scenefile/SceneFile.h"
#include "standalone/loading/SceneFilePolicy.h"
#include "standalone/reading/ChildReading.h"

#include <utility>

namespace zn::startup
{

namespace
{

osg::NodePtr readSceneFile(files::ReadTask& task)
{
    const files::Result<osg::NodePtr> result = osg::scenefile::readSceneFile(
        task.path(), loading::sceneFileOptions(task.options().mapsFile, task.options().limits.maxMemory));
    for (const files::Note& warning : result.warnings)
        task.warn(warning.message);
    if (!result)
        task.fail(result.error());
    return result.value();
}

void addSceneFile(files::SceneReaders& readers)
{
    readers.add({QStringLiteral("scene file"), {QStringLiteral("osb")}, readSceneFile});
}

} // namespace

files::SceneReaders builtInReaders()
{
    files::SceneReaders readers = files::meshes::meshReaders();
    addSceneFile(readers);
    return readers;
}

files::SceneReaders sessionReaders(Session& session)
{
    files::SceneReaders readers;
    const files::SceneReaders inProcess = files::meshes::meshReaders();
    for (files::SceneFormat format : inProcess.formats()) {
        format.read = [&session, read = format.read](files::ReadTask& task) {
            return reading::readMesh(session, task, read);
        };
        readers.add(std::move(format));
    }
    addSceneFile(readers);
    return readers;
}

} // namespace zn::startup
