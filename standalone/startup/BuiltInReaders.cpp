#include "standalone/startup/BuiltInReaders.h"

#include "standalone/formats/ReadTask.h"
#include "standalone/formats/gltf/GltfReader.h"
#include "standalone/formats/obj/ObjReader.h"
#include "standalone/formats/ply/PlyReader.h"
#include "standalone/formats/vrml/VrmlReader.h"
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

osg::NodePtr readSceneFile(formats::ReadTask& task)
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

formats::SceneReaders builtInReaders()
{
    formats::SceneReaders readers;
    readers.add({QStringLiteral("Wavefront OBJ"), {QStringLiteral("obj")}, formats::readObj});
    readers.add({QStringLiteral("glTF 2.0"), {QStringLiteral("gltf"), QStringLiteral("glb")}, formats::readGltf});
    readers.add({QStringLiteral("PLY"), {QStringLiteral("ply")}, formats::readPly});
    readers.add({QStringLiteral("VRML97"), {QStringLiteral("wrl"), QStringLiteral("wrz")}, formats::readVrml});
    readers.add({QStringLiteral("scene file"), {QStringLiteral("osb")}, readSceneFile});
    return readers;
}

} // namespace zn
