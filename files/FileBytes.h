#pragma once

#include "files/ReadTask.h"

#include <cstddef>
#include <memory>
#include <string_view>

namespace files
{

/// The bytes of a file in memory. Whoever keeps a part of them in use keeps the owner.
struct FileBytes {
    std::shared_ptr<const std::byte[]> owner; ///< aligned for numbers of any type
    std::size_t size = 0;

    std::string_view text() const { return {reinterpret_cast<const char*>(owner.get()), size}; }
};

/// Reads the regular file `path` as a whole, within the limits of `task`. The file is free again afterwards: it may be
/// written anew while its scene lives. Fails through `task`, naming `path`.
FileBytes readFile(ReadTask& task, const QString& path);

} // namespace files
