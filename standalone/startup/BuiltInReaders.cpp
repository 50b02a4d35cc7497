#include "standalone/startup/BuiltInReaders.h"

#include "files/ReadTask.h"
#include "files/gltf/GltfReader.h"
#include "files/obj/ObjReader.h"
#include "files/ply/PlyReader.h"
#include "files/scenefile/SceneFile.h"
#include "files/vrml/VrmlReader.h"
#include "standalone/loading/SceneFilePolicy.h"

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

} // namespace

files::SceneReaders builtInReaders()
{
    files::SceneReaders readers;
    readers.add({QStringLiteral("Wavefront OBJ"), {QStringLiteral("obj")}, files::obj::readObj});
    readers.add({QStringLiteral("glTF 2.0"), {QStringLiteral("gltf"), QStringLiteral("glb")}, files::gltf::readGltf});
    readers.add({QStringLiteral("PLY"), {QStringLiteral("ply")}, files::ply::readPly});
    readers.add({QStringLiteral("VRML97"),
                 {QStringLiteral("wrl"), QStringLiteral("vrml"), QStringLiteral("wrz")},
                 files::vrml::readVrml});
    readers.add({QStringLiteral("scene file"), {QStringLiteral("osb")}, readSceneFile});
    return readers;
}

} // namespace zn::startup
