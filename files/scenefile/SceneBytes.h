#pragma once

#include "files/scenefile/ReadSceneFile.h"

#include <cstddef>
#include <memory>
#include <span>

namespace osg::scenefile
{

/// The bytes of a whole file and what keeps them alive. They start at a multiple of 64.
struct SceneBytes {
    std::shared_ptr<const void> owner;
    std::span<const std::byte> bytes;
};

/// Copies `bytes` to an aligned place.
SceneBytes copyBytes(std::span<const std::byte> bytes);

/// Maps the file, or reads it if the options want a copy.
files::Expected<SceneBytes> openBytes(const QString& path, const SceneFileReadOptions& options);

} // namespace osg::scenefile
