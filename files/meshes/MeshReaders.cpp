#include "files/meshes/MeshReaders.h"

#include "files/gltf/GltfReader.h"
#include "files/obj/ObjReader.h"
#include "files/ply/PlyReader.h"
#include "files/vrml/VrmlReader.h"

namespace files::meshes
{

SceneReaders meshReaders()
{
    SceneReaders readers;
    readers.add({QStringLiteral("Wavefront OBJ"), {QStringLiteral("obj")}, obj::readObj});
    readers.add({QStringLiteral("glTF 2.0"), {QStringLiteral("gltf"), QStringLiteral("glb")}, gltf::readGltf});
    readers.add({QStringLiteral("PLY"), {QStringLiteral("ply")}, ply::readPly});
    readers.add({QStringLiteral("VRML97"),
                 {QStringLiteral("wrl"), QStringLiteral("vrml"), QStringLiteral("wrz")},
                 vrml::readVrml});
    return readers;
}

} // namespace files::meshes
