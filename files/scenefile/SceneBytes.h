#pragma once

#include "files/scenefile/ReadSceneFile.h"

#include <cstddef>
#include <cstdint>
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

/// Files below this size are always read: a map costs more than so many bytes, in every start of a process too, which
/// goes through all maps of this one, and a process may have some 65,000.
inline constexpr std::uint64_t leastMappedBytes = 32 << 10;

/// Maps the file, or reads it if it is small or the options want a copy.
files::Expected<SceneBytes> openBytes(const QString& path, const SceneFileReadOptions& options);

} // namespace osg::scenefile
