#include "standalone/startup/BuiltInReaders.h"

#include "files/ReadTask.h"
#include "files/gltf/GltfReader.h"
#include "files/obj/ObjReader.h"
#include "files/ply/PlyReader.h"
#include "files/scenefile/SceneFile.h"
#include "files/vrml/VrmlReader.h"

namespace zn
{

namespace
{

osg::NodePtr readSceneFile(formats::ReadTask& task)
{
    const files::Result<osg::NodePtr> result = osg::readSceneFile(task.path());
    for (const files::Note& warning : result.warnings)
        task.warn(warning.message);
    if (!result)
        task.fail(result.error());
    return result.value();
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
