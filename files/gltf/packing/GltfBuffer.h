#pragma once

#include <cstddef>
#include <memory>

namespace files::gltf
{

/// The bytes of one glTF buffer, within a file that was read, decoded from the text or unpacked.
struct GltfBuffer {
    std::shared_ptr<const std::byte[]> owner;
    const std::byte* data = nullptr;
    std::size_t size = 0;
};

} // namespace files::gltf
