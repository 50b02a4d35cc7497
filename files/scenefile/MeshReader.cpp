#include "files/scenefile/MeshReader.h"

#include "files/scenefile/ArrayReader.h"
#include "files/scenefile/MeshCheck.h"
#include "files/scenefile/SceneErrors.h"

namespace osg::scenefile
{

namespace fb = osg::sceneformat;

namespace
{

static_assert(sizeof(Vec3f) == 12 && sizeof(Vec2f) == 8 && sizeof(Color4f) == 16 && sizeof(FaceRange) == 8);

std::optional<Mesh> meshOf(const ChunkFile& file, const fb::Mesh& record)
{
    Mesh mesh;
    ArrayReader reader(file);
    reader.read(record.positions(), ChunkType::Mesh, mesh.positions);
    reader.read(record.normals(), ChunkType::Mesh, mesh.normals);
    reader.read(record.tex_coords(), ChunkType::Mesh, mesh.texCoords);
    reader.read(record.tex_coords1(), ChunkType::Mesh, mesh.texCoords1);
    reader.read(record.colors(), ChunkType::Mesh, mesh.colors);
    reader.read(record.occlusion(), ChunkType::Mesh, mesh.occlusion);
    reader.read(record.triangles(), ChunkType::Mesh, mesh.triangles);
    reader.read(record.lines(), ChunkType::Mesh, mesh.lines);
    reader.read(record.points(), ChunkType::Mesh, mesh.points);
    reader.read(record.faces(), ChunkType::Mesh, mesh.faces);
    reader.read(record.brep(), ChunkType::BRep, mesh.brep);
    if (!reader.isSound())
        return std::nullopt;
    return mesh;
}

} // namespace

files::Expected<MeshList> readMeshes(const ChunkFile& file, const fb::Scene& scene)
{
    const std::byte* start = file.data().bytes.data();
    MeshCheck check(file.data().bytes.size());
    MeshList meshes;
    if (!scene.meshes())
        return meshes;
    meshes.reserve(scene.meshes()->size());
    for (const fb::Mesh* record : *scene.meshes()) {
        const auto offset = static_cast<std::uint64_t>(reinterpret_cast<const std::byte*>(record) - start);
        std::optional<Mesh> mesh = meshOf(file, *record);
        if (!mesh)
            return makeError(files::ErrorCode::DamagedMesh, Text::tr("An array of a mesh lies outside its chunk"),
                             offset);
        if (const auto defect = check.defect(*mesh))
            return makeError(files::ErrorCode::DamagedMesh, *defect, offset);
        meshes.push_back(std::make_shared<const Mesh>(*std::move(mesh)));
    }
    return meshes;
}

} // namespace osg::scenefile
