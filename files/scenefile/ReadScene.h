#pragma once

#include "files/scenefile/SceneBytes.h"

namespace osg::scenefile
{

/// `readSceneFile` for a file whose bytes are there already; its errors and warnings name no file.
files::Result<NodePtr> readScene(SceneBytes bytes, const SceneFileReadOptions& options);

} // namespace osg::scenefile
