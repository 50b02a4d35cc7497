#include "files/scenefile/ReadSceneFile.h"

#include "files/scenefile/ReadScene.h"
#include "files/scenefile/SceneErrors.h"

#include <new>

namespace osg::scenefile
{

namespace
{

files::Result<NodePtr> readPath(const QString& path, const SceneFileReadOptions& options)
{
    try {
        files::Expected<SceneBytes> bytes = openBytes(path, options);
        if (!bytes)
            return bytes.error();
        return readScene(std::move(bytes).value(), options);
    } catch (const std::bad_alloc&) {
        return outOfMemory();
    }
}

} // namespace

files::Result<NodePtr> readSceneFile(const QString& path, const SceneFileReadOptions& options)
{
    files::Result<NodePtr> result = readPath(path, options);
    if (!result)
        result.error().file = path;
    for (files::Note& warning : result.warnings)
        warning.file = path;
    return result;
}

} // namespace osg::scenefile
