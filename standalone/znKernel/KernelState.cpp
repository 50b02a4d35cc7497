#include "standalone/znKernel/KernelState.h"

#include "standalone/formats/ReadTask.h"
#include "standalone/scenefile/SceneFile.h"

namespace zn
{

namespace
{

formats::ReadErrorCode readErrorOf(osg::SceneFileErrorCode code)
{
    using Code = osg::SceneFileErrorCode;
    switch (code) {
    case Code::NotFound:
        return formats::ReadErrorCode::NotFound;
    case Code::NotRegular:
    case Code::ReadFailed:
        return formats::ReadErrorCode::NotReadable;
    case Code::UnsupportedVersion:
        return formats::ReadErrorCode::Unsupported;
    case Code::LimitExceeded:
        return formats::ReadErrorCode::LimitExceeded;
    case Code::OutOfMemory:
        return formats::ReadErrorCode::OutOfMemory;
    default:
        return formats::ReadErrorCode::Damaged;
    }
}

osg::NodePtr read(formats::ReadTask& task)
{
    const osg::SceneFileReadResult result = osg::readSceneFile(task.path());
    for (const osg::SceneFileWarning& warning : result.warnings)
        task.warn(warning.message());
    if (result.error)
        task.fail(readErrorOf(result.error->code), result.error->message,
                  QStringLiteral("byte %1").arg(result.error->offset));
    return result.root;
}

} // namespace

formats::SceneReaders sceneReaders()
{
    formats::SceneReaders readers = formats::SceneReaders::builtIn();
    readers.add({QStringLiteral("scene file"), {QStringLiteral("osb")}, read});
    return readers;
}

} // namespace zn
