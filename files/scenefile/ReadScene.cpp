#include "files/scenefile/ReadScene.h"

#include "files/scenefile/GraphCheck.h"
#include "files/scenefile/GraphReader.h"

namespace osg::scenefile
{

namespace
{

files::Result<NodePtr> readTree(const ChunkFile& file, const SceneFileReadOptions& options)
{
    const files::Expected<const fb::Scene*> graph = checkedGraph(file, options);
    if (!graph)
        return graph.error();
    files::Expected<MeshList> meshes = readMeshes(file, *graph.value());
    if (!meshes)
        return meshes.error();
    files::Expected<ImageList> images = readImages(file, *graph.value());
    if (!images)
        return images.error();
    GraphReader reader(*graph.value(), std::move(meshes).value(), std::move(images).value(), file.data().owner);
    const NodePtr root = reader.read();
    return {root, reader.warnings().notes()};
}

} // namespace

files::Result<NodePtr> readScene(SceneBytes bytes, const SceneFileReadOptions& options)
{
    const files::Expected<ChunkFile> file = ChunkFile::open(std::move(bytes));
    if (!file)
        return file.error();
    if (options.verifyChecksums)
        if (const files::Expected<void> verified = file->verifyChecksums(); !verified)
            return verified.error();
    return readTree(file.value(), options);
}

} // namespace osg::scenefile
