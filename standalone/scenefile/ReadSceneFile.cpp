#include "standalone/scenefile/ReadScene.h"

#include "standalone/scenefile/GraphCheck.h"
#include "standalone/scenefile/GraphReader.h"

#include <new>

namespace osg
{

namespace scenefile
{

namespace
{

SceneFileReadResult failed(const SceneFileError& error)
{
    return {NodePtr(), error, {}};
}

SceneFileReadResult readTree(const ChunkFile& file, const SceneFileReadOptions& options)
{
    const Result<const fb::Scene*> graph = checkedGraph(file, options);
    if (const auto* error = std::get_if<SceneFileError>(&graph))
        return failed(*error);
    const fb::Scene& scene = *std::get<const fb::Scene*>(graph);
    Result<MeshList> meshes = readMeshes(file, scene);
    if (const auto* error = std::get_if<SceneFileError>(&meshes))
        return failed(*error);
    GraphReader reader(scene, std::get<MeshList>(std::move(meshes)));
    SceneFileReadResult result;
    result.root = reader.read();
    result.warnings = reader.warnings().all();
    return result;
}

SceneFileReadResult readPath(const QString& path, const SceneFileReadOptions& options)
{
    Result<SceneBytes> bytes = openBytes(path, options);
    if (const auto* error = std::get_if<SceneFileError>(&bytes))
        return failed(*error);
    return readScene(std::get<SceneBytes>(std::move(bytes)), options);
}

} // namespace

SceneFileReadResult readScene(SceneBytes bytes, const SceneFileReadOptions& options)
{
    const Result<ChunkFile> file = ChunkFile::open(std::move(bytes));
    if (const auto* error = std::get_if<SceneFileError>(&file))
        return failed(*error);
    const ChunkFile& chunks = std::get<ChunkFile>(file);
    if (options.verifyChecksums)
        if (const auto error = chunks.wrongChecksum())
            return failed(*error);
    return readTree(chunks, options);
}

} // namespace scenefile

SceneFileReadResult readSceneFile(const QString& path, const SceneFileReadOptions& options)
{
    SceneFileReadResult result;
    try {
        result = scenefile::readPath(path, options);
    } catch (const std::bad_alloc&) {
        result = {NodePtr(), scenefile::outOfMemory(), {}};
    }
    if (result.error)
        result.error->file = path;
    return result;
}

} // namespace osg
