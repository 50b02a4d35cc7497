#include "standalone/znKernel/KernelState.h"

#include "standalone/formats/ReadTask.h"
#include "standalone/scenefile/SceneFile.h"

namespace zn
{

namespace
{

osg::NodePtr read(formats::ReadTask& task)
{
    const files::Result<osg::NodePtr> result = osg::readSceneFile(task.path());
    for (const files::Note& warning : result.warnings)
        task.warn(warning.message);
    if (!result)
        task.fail(result.error());
    return result.value();
}

} // namespace

formats::SceneReaders sceneReaders()
{
    formats::SceneReaders readers = formats::SceneReaders::builtIn();
    readers.add({QStringLiteral("scene file"), {QStringLiteral("osb")}, read});
    return readers;
}

} // namespace zn
