#include "files/scenefile/MeshReader.h"

#include "files/scenefile/MeshCheck.h"
#include "files/scenefile/SceneErrors.h"

namespace osg::scenefile
{

namespace fb = osg::sceneformat;

namespace
{

static_assert(sizeof(Vec3f) == 12 && sizeof(Vec2f) == 8 && sizeof(Color4f) == 16 && sizeof(FaceRange) == 8);

/// Takes the arrays of one mesh.
class ArrayReader
{
public:
    explicit ArrayReader(const ChunkFile& file) : m_file(file) {}

    /// Leaves `target` as it is when there is no such array, or when it does not lie within a chunk of `type`.
    template <class T>
    void read(const fb::Array* array, ChunkType type, Buffer<T>& target)
    {
        if (!array)
            return;
        const auto place = placeOf(*array, type, sizeof(T), alignof(T));
        if (!place)
            m_sound = false;
        else
            target = Buffer<T>(m_file.data().owner, reinterpret_cast<const T*>(*place), array->count());
    }

    bool isSound() const { return m_sound; }

private:
    std::optional<const std::byte*> placeOf(const fb::Array& array, ChunkType type, std::size_t size,
                                            std::size_t alignment) const
    {
        if (array.chunk() >= m_file.chunks().size())
            return std::nullopt;
        const ChunkEntry& chunk = m_file.chunks()[array.chunk()];
        if (chunk.type != type || array.offset() % alignment != 0 || array.offset() > chunk.size ||
            array.count() > (chunk.size - array.offset()) / size)
            return std::nullopt;
        return m_file.content(chunk).data() + array.offset();
    }

    const ChunkFile& m_file;
    bool m_sound = true;
};

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
